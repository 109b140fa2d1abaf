#include "Utils/UIAnimation.h"

#include "Core/UIControl.h"
#include "Core/UIManager.h"

#include <algorithm>
#include <utility>

namespace DuiLib {

IUIAnimation::~IUIAnimation() = default;

CAnimationData::CAnimationData(int elapse, int frames, int id, BOOL loop)
    : m_nAnimationID(id),
      m_nElapse(elapse),
      m_nTotalFrame(frames),
      m_nCurFrame(0),
      m_bLoop(loop),
      m_bFirstLoop(TRUE)
{
}

CUIAnimation::CUIAnimation(CControlUI* owner) : m_pControl(owner) {}

CUIAnimation::CUIAnimation(const CUIAnimation&) : IUIAnimation(), m_pControl(NULL) {}

// The assigned object keeps its own owner, timers and animations.
CUIAnimation& CUIAnimation::operator=(const CUIAnimation&)
{
    return *this;
}

// The owner may be gone already, so a timer that still runs is left to it; its ticks find nothing.
CUIAnimation::~CUIAnimation() = default;

void CUIAnimation::Attach(CControlUI* owner)
{
    m_pControl = owner;
}

BOOL CUIAnimation::StartAnimation(int elapse, int frames, int id, BOOL loop)
{
    if (elapse <= 0 || frames <= 0 || IsAnimationRunning(id))
        return FALSE;
    CPaintManagerUI* manager = m_pControl ? m_pControl->GetManager() : NULL;
    if (!manager ||
        !manager->SetTimer(m_pControl, static_cast<UINT>(id), static_cast<UINT>(elapse)))
        return FALSE;
    m_aAnimations.push_back(std::make_shared<CAnimationData>(elapse, frames, id, loop));
    return TRUE;
}

void CUIAnimation::StopAnimation(int id)
{
    // Every animation, not only number 0: callers rely on it.
    if (id == 0) {
        const auto stopped = std::move(m_aAnimations);
        m_aAnimations.clear();
        for (const auto& animation : stopped)
            KillOwnerTimer(animation->m_nAnimationID);
        return;
    }
    if (const auto animation = FindAnimation(id))
        EndAnimation(animation.get());
}

BOOL CUIAnimation::IsAnimationRunning(int id)
{
    return FindAnimation(id) != nullptr;
}

int CUIAnimation::GetCurrentFrame(int id)
{
    const auto animation = FindAnimation(id);
    return animation ? animation->m_nCurFrame : -1;
}

BOOL CUIAnimation::SetCurrentFrame(int frame, int id)
{
    const auto animation = FindAnimation(id);
    if (!animation)
        return FALSE;
    animation->m_nCurFrame = frame;
    return TRUE;
}

void CUIAnimation::OnAnimationStep(int, int, int) {}

void CUIAnimation::OnAnimationStart(int, BOOL) {}

void CUIAnimation::OnAnimationStop(int) {}

// A hook may stop or restart this very animation, or destroy the object. Then nobody holds the
// data of this tick any more, and the tick ends without touching anything.
void CUIAnimation::OnAnimationElapse(int id)
{
    const std::weak_ptr<CAnimationData> ticking = FindAnimation(id);
    const auto read = [&ticking](auto member, auto otherwise) {
        const auto animation = ticking.lock();
        return animation ? (*animation).*member : otherwise;
    };

    if (ticking.expired())
        return;
    if (read(&CAnimationData::m_nCurFrame, 0) == 0)
        OnAnimationStart(id, read(&CAnimationData::m_bFirstLoop, FALSE));

    if (ticking.expired())
        return;
    OnAnimationStep(read(&CAnimationData::m_nTotalFrame, 0), read(&CAnimationData::m_nCurFrame, 0),
                    id);

    if (ticking.expired())
        return;
    if (read(&CAnimationData::m_nCurFrame, 0) >= read(&CAnimationData::m_nTotalFrame, 0)) {
        OnAnimationStop(id);
        const auto animation = ticking.lock();
        if (!animation)
            return;
        if (!animation->m_bLoop) {
            EndAnimation(animation.get());
            return;
        }
        animation->m_nCurFrame = 0;
        animation->m_bFirstLoop = FALSE;
    }
    if (const auto animation = ticking.lock())
        ++animation->m_nCurFrame;
}

CAnimationData* CUIAnimation::GetAnimationDataByID(int id)
{
    return FindAnimation(id).get();
}

std::shared_ptr<CAnimationData> CUIAnimation::FindAnimation(int id) const
{
    const auto found =
        std::find_if(m_aAnimations.begin(), m_aAnimations.end(),
                     [id](const auto& animation) { return animation->m_nAnimationID == id; });
    return found == m_aAnimations.end() ? nullptr : *found;
}

void CUIAnimation::EndAnimation(const CAnimationData* animation)
{
    const int id = animation->m_nAnimationID;
    std::erase_if(m_aAnimations,
                  [animation](const auto& entry) { return entry.get() == animation; });
    KillOwnerTimer(id);
}

void CUIAnimation::KillOwnerTimer(int id) const
{
    if (m_pControl && m_pControl->GetManager())
        m_pControl->GetManager()->KillTimer(m_pControl, static_cast<UINT>(id));
}

} // namespace DuiLib

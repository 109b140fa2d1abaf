#pragma once

#include "Core/UIExport.h"
#include "Core/UIPlatform.h"

#include <memory>
#include <vector>

namespace DuiLib {

class CControlUI;

// What an animation offers: numbered animations that step through frames, and hooks per step.
class UILIB_API IUIAnimation {
public:
    virtual ~IUIAnimation();

    virtual BOOL StartAnimation(int elapse, int frames, int id = 0, BOOL loop = FALSE) = 0;
    virtual void StopAnimation(int id = 0) = 0;
    virtual BOOL IsAnimationRunning(int id) = 0;
    virtual int GetCurrentFrame(int id = 0) = 0;
    virtual BOOL SetCurrentFrame(int frame, int id = 0) = 0;

    virtual void OnAnimationStep(int total, int current, int id) = 0;
    virtual void OnAnimationStart(int id, BOOL first) = 0;
    virtual void OnAnimationStop(int id) = 0;
    virtual void OnAnimationElapse(int id) = 0;
};

// One running animation.
class UILIB_API CAnimationData {
public:
    CAnimationData(int elapse, int frames, int id, BOOL loop);

    int m_nAnimationID;
    int m_nElapse; // milliseconds between two steps
    int m_nTotalFrame;
    int m_nCurFrame;

    BOOL m_bLoop;
    BOOL m_bFirstLoop;
};

// Animations driven by the control timers of an owning control; a second base class of a control,
// or the base of a helper object.
//
// The owner passes its timer ticks on: OnAnimationElapse(event.wParam). A plain animation of n
// frames makes n + 1 steps, current = 0 to n. A looping one shows 0 only in its first round and
// then repeats 1 to n. Hooks may stop and restart any animation, or destroy the object.
//
// A copy has neither an owner nor a running animation.
class UILIB_API CUIAnimation : public IUIAnimation {
public:
    CUIAnimation(CControlUI* owner = NULL);
    CUIAnimation(const CUIAnimation& other);
    CUIAnimation& operator=(const CUIAnimation& other);
    ~CUIAnimation() override;

    // The owner is not kept alive; it must outlive the running animations.
    void Attach(CControlUI* owner);

    // Period in milliseconds, number of frames. FALSE when the id is running already, a number is
    // not positive, or the owner is missing, is in no window or gets no timer.
    BOOL StartAnimation(int elapse, int frames, int id = 0, BOOL loop = FALSE) override;
    // Id 0 stops every animation of the object. Calls no hook.
    void StopAnimation(int id = 0) override;
    BOOL IsAnimationRunning(int id) override;
    // -1 and FALSE for an id that is not running.
    int GetCurrentFrame(int id = 0) override;
    BOOL SetCurrentFrame(int frame, int id = 0) override;

    // Hooks; they do nothing here.
    void OnAnimationStep(int total, int current, int id) override;
    void OnAnimationStart(int id, BOOL first) override;
    void OnAnimationStop(int id) override;

    // One tick of an animation.
    void OnAnimationElapse(int id) override;

protected:
    // Null when the id is not running. Valid until that animation ends.
    CAnimationData* GetAnimationDataByID(int id);

    CControlUI* m_pControl;

private:
    std::shared_ptr<CAnimationData> FindAnimation(int id) const;
    void EndAnimation(const CAnimationData* animation);
    void KillOwnerTimer(int id) const;

    std::vector<std::shared_ptr<CAnimationData>> m_aAnimations;
};

} // namespace DuiLib

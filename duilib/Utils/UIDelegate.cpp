#include "Utils/UIDelegate.h"

#include "win32/Handles.h"

#include <memory>
#include <new>
#include <vector>

namespace DuiLib {

CDelegateBase::CDelegateBase(void* pObject, void* pFn) : m_pObject(pObject), m_pFn(pFn) {}

CDelegateBase::CDelegateBase(const CDelegateBase& other) = default;

CDelegateBase::~CDelegateBase() = default;

bool CDelegateBase::Equals(const CDelegateBase& other) const
{
    return m_pObject == other.m_pObject && GetFn() == other.GetFn() && HasSameFunction(other);
}

bool CDelegateBase::operator()(void* param)
{
    return Invoke(param);
}

void* CDelegateBase::GetFn() const
{
    return m_pFn;
}

void* CDelegateBase::GetObject()
{
    return m_pObject;
}

bool CDelegateBase::HasSameFunction(const CDelegateBase& /*other*/) const
{
    return true;
}

CDelegateStatic::CDelegateStatic(Fn pFn) : CDelegateBase(nullptr, reinterpret_cast<void*>(pFn)) {}

CDelegateStatic::CDelegateStatic(const CDelegateStatic& other) = default;

CDelegateBase* CDelegateStatic::Copy() const
{
    return new CDelegateStatic(*this);
}

bool CDelegateStatic::Invoke(void* param)
{
    const auto function = reinterpret_cast<Fn>(GetFn());
    return function != nullptr && function(param);
}

// A running call of a source, on the stack of that call. Removed delegates wait in the outermost
// one, because one of them may be the caller of the removal.
struct CEventSource::Walk {
    Walk* outer;
    bool sourceAlive = true;
    int next = 0;
    int end = 0;
    std::vector<std::unique_ptr<CDelegateBase>> removed = {};
};

CEventSource::CEventSource() : m_pWalk(nullptr) {}

CEventSource::CEventSource(const CEventSource& other) : m_pWalk(nullptr)
{
    CopyFrom(other);
}

CEventSource& CEventSource::operator=(const CEventSource& other)
{
    if (this != &other) {
        Clear();
        CopyFrom(other);
    }
    return *this;
}

CEventSource::~CEventSource()
{
    Clear();
    for (Walk* walk = m_pWalk; walk != nullptr; walk = walk->outer)
        walk->sourceAlive = false;
}

void CEventSource::CopyFrom(const CEventSource& other)
{
    for (int i = 0; i < other.m_aDelegates.GetSize(); ++i)
        m_aDelegates.Add(static_cast<CDelegateBase*>(other.m_aDelegates[i])->Copy());
}

CEventSource::operator bool()
{
    return !m_aDelegates.IsEmpty();
}

int CEventSource::IndexOf(const CDelegateBase& delegate) const
{
    for (int i = 0; i < m_aDelegates.GetSize(); ++i) {
        if (static_cast<const CDelegateBase*>(m_aDelegates[i])->Equals(delegate))
            return i;
    }
    return -1;
}

void CEventSource::operator+=(const CDelegateBase& delegate)
{
    if (IndexOf(delegate) >= 0)
        return;
    std::unique_ptr<CDelegateBase> copy(delegate.Copy());
    m_aDelegates.Add(copy.get());
    copy.release();
}

void CEventSource::operator+=(FnType pFn)
{
    *this += MakeDelegate(pFn);
}

void CEventSource::operator-=(const CDelegateBase& delegate)
{
    const int index = IndexOf(delegate);
    if (index < 0)
        return;
    auto* const found = static_cast<CDelegateBase*>(m_aDelegates[index]);
    m_aDelegates.Remove(index);
    for (Walk* walk = m_pWalk; walk != nullptr; walk = walk->outer) {
        if (index < walk->next)
            --walk->next;
        if (index < walk->end)
            --walk->end;
    }
    Dispose(found);
}

void CEventSource::operator-=(FnType pFn)
{
    *this -= MakeDelegate(pFn);
}

void CEventSource::Dispose(CDelegateBase* delegate)
{
    std::unique_ptr<CDelegateBase> owner(delegate);
    if (m_pWalk == nullptr)
        return;
    Walk* outermost = m_pWalk;
    while (outermost->outer != nullptr)
        outermost = outermost->outer;
    try {
        outermost->removed.push_back(std::move(owner));
    } catch (const std::bad_alloc&) {
        owner.release(); // lost, for it may be running
    }
}

void CEventSource::Clear()
{
    for (Walk* walk = m_pWalk; walk != nullptr; walk = walk->outer)
        walk->next = walk->end = 0;
    while (!m_aDelegates.IsEmpty()) {
        const int last = m_aDelegates.GetSize() - 1;
        auto* const delegate = static_cast<CDelegateBase*>(m_aDelegates[last]);
        m_aDelegates.Remove(last);
        Dispose(delegate);
    }
    m_aDelegates.Empty();
}

bool CEventSource::operator()(void* param)
{
    if (m_aDelegates.IsEmpty())
        return true;

    Walk walk{m_pWalk};
    walk.end = m_aDelegates.GetSize();
    m_pWalk = &walk;
    const Quillet::AtScopeEnd ended([&] {
        if (walk.sourceAlive)
            m_pWalk = walk.outer;
    });

    bool goOn = true;
    while (goOn && walk.sourceAlive && walk.next < walk.end)
        goOn = (*static_cast<CDelegateBase*>(m_aDelegates[walk.next++]))(param);
    return goOn;
}

} // namespace DuiLib

#pragma once

#include "Core/UIExport.h"
#include "Core/UIPlatform.h"

#include "Utils/Utils.h"

#include <string.h>

#include <typeinfo>

namespace DuiLib {

// A callable: a function, or an object (not owned) with a member function. The argument is what the
// event source passes, such as a TEventUI* or TNotifyUI*.
class UILIB_API CDelegateBase {
public:
    CDelegateBase(void* pObject, void* pFn);
    CDelegateBase(const CDelegateBase& other);
    virtual ~CDelegateBase();

    // The same object and the same function.
    bool Equals(const CDelegateBase& other) const;
    bool operator()(void* param);
    virtual CDelegateBase* Copy() const = 0; // the caller deletes it

protected:
    virtual void* GetFn() const;
    void* GetObject();
    virtual bool Invoke(void* param) = 0;

    // Called when object and GetFn() agree already. A member pointer may be wider than an address,
    // so its class compares the whole of it.
    virtual bool HasSameFunction(const CDelegateBase& other) const;

private:
    CDelegateBase& operator=(const CDelegateBase&) = delete;

    void* m_pObject;
    void* m_pFn;
};

// A plain function.
class UILIB_API CDelegateStatic : public CDelegateBase {
    typedef bool (*Fn)(void*);

public:
    CDelegateStatic(Fn pFn);
    CDelegateStatic(const CDelegateStatic& other);
    CDelegateBase* Copy() const override;

protected:
    bool Invoke(void* param) override;
};

// A member function T::fn called on an O.
template <class O, class T>
class CDelegate : public CDelegateBase {
    typedef bool (T::*Fn)(void*);

public:
    CDelegate(O* pObj, Fn pFn) : CDelegateBase(pObj, FirstWord(pFn)), m_pFn(pFn) {}
    CDelegate(const CDelegate& other) : CDelegateBase(other), m_pFn(other.m_pFn) {}
    CDelegateBase* Copy() const override { return new CDelegate(*this); }

protected:
    bool Invoke(void* param) override
    {
        O* object = static_cast<O*>(GetObject());
        return (object->*m_pFn)(param);
    }

    bool HasSameFunction(const CDelegateBase& other) const override
    {
        return typeid(*this) == typeid(other) &&
               m_pFn == static_cast<const CDelegate&>(other).m_pFn;
    }

private:
    static void* FirstWord(Fn pFn)
    {
        void* word = NULL;
        memcpy(&word, &pFn, sizeof(pFn) < sizeof(word) ? sizeof(pFn) : sizeof(word));
        return word;
    }

    Fn m_pFn;
};

template <class O, class T>
CDelegate<O, T> MakeDelegate(O* pObject, bool (T::*pFn)(void*))
{
    return CDelegate<O, T>(pObject, pFn);
}

inline CDelegateStatic MakeDelegate(bool (*pFn)(void*))
{
    return CDelegateStatic(pFn);
}

// An ordered list of delegates, of which it owns copies.
//
// While it calls them, delegates may add or remove delegates and destroy the source: one removed is
// not called any more, one added is called the next time.
class UILIB_API CEventSource {
    typedef bool (*FnType)(void*);

public:
    CEventSource();
    CEventSource(const CEventSource& other);
    CEventSource& operator=(const CEventSource& other);
    ~CEventSource();

    operator bool(); // true when it has a delegate

    void operator+=(const CDelegateBase& delegate); // unless an equal one is there
    void operator+=(FnType pFn);
    void operator-=(const CDelegateBase& delegate);
    void operator-=(FnType pFn);

    // Calls the delegates in order; the first that returns false ends the walk.
    bool operator()(void* param);
    void Clear();

protected:
    CStdPtrArray m_aDelegates;

private:
    struct Walk;

    int IndexOf(const CDelegateBase& delegate) const;
    void Dispose(CDelegateBase* delegate);
    void CopyFrom(const CEventSource& other);

    Walk* m_pWalk; // the innermost running call
};

} // namespace DuiLib

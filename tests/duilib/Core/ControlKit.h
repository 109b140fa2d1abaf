#pragma once

#include "support/ControlHost.h"

#include <functional>
#include <ostream>
#include <string>

// For tests of controls and layouts.
namespace test {

// A rectangle that prints and compares.
struct Place {
    LONG left, top, right, bottom;

    constexpr Place(LONG l, LONG t, LONG r, LONG b) : left(l), top(t), right(r), bottom(b) {}
    constexpr Place(const RECT& rect) : Place(rect.left, rect.top, rect.right, rect.bottom) {}
    bool operator==(const Place&) const = default;
};

inline std::ostream& operator<<(std::ostream& out, const Place& place)
{
    return out << '(' << place.left << ',' << place.top << ',' << place.right << ',' << place.bottom
               << ')';
}

// A delegate that calls a function object; it has to outlive the source.
class EventSink {
public:
    explicit EventSink(std::function<bool(void*)> call) : m_call(std::move(call)) {}

    bool Call(void* argument)
    {
        ++m_calls;
        return m_call(argument);
    }
    int Calls() const { return m_calls; }
    auto Delegate() { return DuiLib::MakeDelegate(this, &EventSink::Call); }

private:
    std::function<bool(void*)> m_call;
    int m_calls = 0;
};

// Marks the whole window as up to date, so that UpdateRect tells what is invalidated from now on.
inline void Validate(ControlHost& host)
{
    host.Layout();
    ::ValidateRect(host.Window(), nullptr);
}

inline Place UpdateRect(const ControlHost& host)
{
    RECT rect{};
    ::GetUpdateRect(host.Window(), &rect, FALSE);
    return rect;
}

// A text with the places of all children of a container.
inline std::wstring Places(const DuiLib::CContainerUI& container)
{
    std::wstring text;
    for (int i = 0; i < container.GetCount(); ++i) {
        const RECT& rect = container.GetItemAt(i)->GetPos();
        text += (i > 0 ? L" " : L"") + std::to_wstring(rect.left) + L"," +
                std::to_wstring(rect.top) + L"," + std::to_wstring(rect.right) + L"," +
                std::to_wstring(rect.bottom);
    }
    return text;
}

} // namespace test

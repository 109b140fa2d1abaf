#pragma once

#include "tests/quillet/dialogs/DialogHost.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace test {

// The arguments of a message box.
struct BoxCall {
    HWND parent = nullptr;
    std::wstring caption{}, text{}, ok{}, cancel{};
    unsigned type = 1;
    bool* checked = nullptr;
    bool showCaption = true;
    bool modal = true;
    bool forceModal = false;
};

// One of the two generations of message boxes.
struct Generation {
    const char* name;
    const wchar_t* windowClass;
    const wchar_t* skinFile;
    unsigned (*pop)(const BoxCall&);
};

template <class Box>
unsigned Pop(const BoxCall& call)
{
    return Box::PopMessageBox(call.parent, call.caption, call.text, call.ok, call.cancel, call.type,
                              call.checked, call.showCaption, call.modal, call.forceModal);
}

inline constexpr Generation kOlder{"UIMessageBox", L"UIMessageBox", L"MessageBox.xml",
                                   &Pop<DuiLib::UIMessageBox>};
inline constexpr Generation kNewer{"UIIMessageBox", L"UIIMessageBox", L"MessageBox02.xml",
                                   &Pop<DuiLib::UIIMessageBox>};
inline constexpr Generation kGenerations[] = {kOlder, kNewer};

inline void PrintTo(const Generation& generation, std::ostream* out)
{
    *out << generation.name;
}

// A box with a test's own eyes: counts its ends and wires one more button.
template <class Base>
class OpenBox : public Base {
public:
    explicit OpenBox(const BoxCall& call)
        : Base(call.parent, call.caption, call.text, call.ok, call.cancel, call.type, call.checked,
               call.showCaption, call.modal)
    {
    }
    ~OpenBox() override { ++destroyed; }

    static unsigned RunModal(OpenBox* box, HWND parent) { return Base::RunModal(box, parent); }
    static unsigned RunModeless(OpenBox* box, HWND parent)
    {
        return Base::RunModeless(box, parent);
    }

    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        return message == refused ? refusal : Base::HandleMessage(message, wParam, lParam);
    }

    static inline int destroyed = 0;
    UINT refused = 0; // the message that is answered with the refusal
    LRESULT refusal = 0;
    std::function<void()> onInit;

    using Base::GetSkinFile;
    using Base::GetWindowClassName;
    using Base::m_bModal;
    using Base::m_bShowCaption;
    using Base::m_hParent;
    using Base::m_nType;
    using Base::m_pbChecked;
    using Base::m_pm;
    using Base::m_strCancelText;
    using Base::m_strCaption;
    using Base::m_strOkText;
    using Base::m_strText;
    using Base::OnClickItem;

protected:
    void InitWindow() override
    {
        Base::InitWindow();
        if (auto* const other = this->m_pm.FindControl(L"btn_other"))
            other->OnNotify += DuiLib::MakeDelegate(this, &OpenBox::Answer);
        if (onInit)
            onInit();
    }

private:
    bool Answer(void* notification) { return Base::OnClickItem(notification); }
};

// A box's window and its controls.
class ShownBox {
public:
    ShownBox() = default;
    explicit ShownBox(HWND window) : m_window(window) {}

    // The boxes of the thread, the uppermost first.
    static std::vector<ShownBox> All()
    {
        std::vector<ShownBox> boxes;
        const auto add = [](HWND window, LPARAM list) -> BOOL {
            wchar_t name[64]{};
            ::GetClassNameW(window, name, 64);
            for (const auto& generation : kGenerations)
                if (std::wstring_view(name) == generation.windowClass)
                    reinterpret_cast<std::vector<ShownBox>*>(list)->emplace_back(window);
            return TRUE;
        };
        ::EnumThreadWindows(::GetCurrentThreadId(), add, reinterpret_cast<LPARAM>(&boxes));
        return boxes;
    }
    // The only one over an owner.
    static ShownBox Over(HWND owner)
    {
        std::vector<ShownBox> found;
        for (const ShownBox& box : All())
            if (::GetWindow(box.Window(), GW_OWNER) == owner)
                found.push_back(box);
        EXPECT_EQ(found.size(), 1u);
        return found.empty() ? ShownBox() : found.front();
    }

    HWND Window() const { return m_window; }
    bool IsOpen() const { return ::IsWindow(m_window) != FALSE; }
    template <class Control = DuiLib::CControlUI>
    Control* Find(const wchar_t* name) const
    {
        return ControlOf<Control>(m_window, name);
    }
    bool IsVisible(const wchar_t* name) const
    {
        const auto* const control = Find(name);
        return control && control->IsVisible();
    }
    std::wstring Text(const wchar_t* name) const
    {
        const auto* const control = Find(name);
        return control ? control->GetText().GetData() : L"(none)";
    }
    DWORD Colour(const wchar_t* name) const
    {
        const auto* const label = Find<DuiLib::CLabelUI>(name);
        return label ? label->GetTextColor() : 0;
    }
    void Check(bool checked) const
    {
        auto* const option = Find<DuiLib::COptionUI>(L"checkbox_tip");
        ASSERT_NE(option, nullptr);
        option->Selected(checked);
    }

    void Click(const wchar_t* name) const { ClickControl(m_window, name); }

private:
    HWND m_window = nullptr;
};

// Steps that run one after the other in the message loops to come, the next one when all that the
// previous one has posted was dispatched. A modal box that is open after the last one is a failure,
// and is destroyed.
class Script : public DuiLib::CWindowWnd {
public:
    using Step = std::function<void()>;

    // A loop that is to be quit goes on as long as messages are posted.
    enum class Afterwards { Check, Nothing };

    Script(std::initializer_list<Step> steps, Afterwards afterwards = Afterwards::Check)
        : m_steps(steps), m_checks(afterwards == Afterwards::Check ? 1u : 0u)
    {
        if (m_checks > 0)
            m_steps.push_back([] { DestroyOpenBoxes(); });
        Create(HWND_MESSAGE, L"", 0, 0, 0, 0, 0, 0);
        Next();
    }
    ~Script()
    {
        EXPECT_LE(m_steps.size(), m_checks) << "steps that never ran";
        if (m_hWnd)
            ::DestroyWindow(m_hWnd);
    }
    Script(const Script&) = delete;
    Script& operator=(const Script&) = delete;

protected:
    LPCTSTR GetWindowClassName() const override { return L"QuilletTestScript"; }
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message == WM_USER + 4)
            DuiLib::UIMainQueue::getInstance().finish();
        if (message != WM_APP)
            return CWindowWnd::HandleMessage(message, wParam, lParam);
        if (wParam > 0) {
            ::PostMessageW(m_hWnd, WM_APP, wParam - 1, 0);
        } else if (!m_steps.empty()) {
            const Step step = std::move(m_steps.front());
            m_steps.pop_front();
            const bool isLast = m_steps.size() <= m_checks;
            if (!isLast)
                Next(); // the step may run a loop of its own
            step();
            if (isLast)
                Next();
        }
        return 0;
    }

private:
    static constexpr WPARAM kRounds = 6; // through the queue

    void Next()
    {
        if (!m_steps.empty())
            ::PostMessageW(m_hWnd, WM_APP, kRounds, 0);
    }

    static void DestroyOpenBoxes()
    {
        for (const ShownBox& box : ShownBox::All()) {
            const bool modal = ::GetWindowLongW(box.Window(), GWL_STYLE) & WS_SYSMENU;
            if (!modal || !box.IsOpen())
                continue;
            ADD_FAILURE() << "a box is still open";
            ::DestroyWindow(box.Window());
        }
    }

    std::deque<Step> m_steps;
    const std::size_t m_checks; // steps that are not the test's own
};

// What the skin of both generations has: every control with a text and a colour of its own.
struct SkinPart {
    const wchar_t* name;
    const wchar_t* markup;
};
inline constexpr SkinPart kBoxParts[] = {
    {L"lab_caption", L"<Label name=\"lab_caption\" text=\"skin caption\" height=\"20\"/>"},
    {L"btn_close", L"<Button name=\"btn_close\" text=\"skin close\" height=\"20\"/>"},
    {L"lab_divide", L"<Label name=\"lab_divide\" height=\"1\"/>"},
    {L"lab_text", L"<Label name=\"lab_text\" text=\"skin text\" tooltip=\"skin tip\" font=\"1\" "
                  L"height=\"60\"/>"},
    {L"lab_tip", L"<Label name=\"lab_tip\" text=\"skin tip\" height=\"20\"/>"},
    {L"checkbox_tip", L"<Option name=\"checkbox_tip\" text=\"skin check\" height=\"20\"/>"},
    {L"btn_ok",
     L"<Button name=\"btn_ok\" text=\"skin ok\" textcolor=\"#FF010203\" height=\"20\"/>"},
    {L"btn_cancel",
     L"<Button name=\"btn_cancel\" text=\"skin cancel\" textcolor=\"#FF040506\" height=\"20\"/>"},
    {L"btn_other", L"<Button name=\"btn_other\" height=\"20\"/>"},
};

// The skin without the named controls.
inline std::wstring BoxSkin(std::initializer_list<const wchar_t*> without = {})
{
    std::wstring skin = L"<Window size=\"440,260\">"
                        L"<Font id=\"0\" name=\"Arial\" size=\"30\"/>"
                        L"<Font id=\"1\" name=\"Arial\" size=\"14\"/><VerticalLayout>";
    for (const SkinPart& part : kBoxParts) {
        const auto isPart = [&](const wchar_t* name) {
            return std::wstring_view(name) == part.name;
        };
        if (std::ranges::none_of(without, isPart))
            skin += part.markup;
    }
    return skin + L"</VerticalLayout></Window>";
}

inline std::wstring Replaced(std::wstring text, std::wstring_view from, std::wstring_view to)
{
    const auto at = text.find(from);
    EXPECT_NE(at, std::wstring::npos) << Utf8(from);
    return at == std::wstring::npos ? text : text.replace(at, from.size(), to);
}

// The skins of both generations, and a process without texts at 96 DPI.
class MessageBoxKit : public testing::Test {
protected:
    MessageBoxKit()
    {
        UseSkin(BoxSkin());
        ForgetTexts();
        DuiLib::CResourceManagerEx::GetInstance()->SetScale(96);
    }
    ~MessageBoxKit() override
    {
        for (const ShownBox& box : ShownBox::All())
            if (box.IsOpen())
                ::DestroyWindow(box.Window());
        ForgetTexts();
        DuiLib::CResourceManagerEx::GetInstance()->SetScale(96);
    }

    // Opens a box that is not modal over the parent.
    ShownBox Open(const Generation& generation, BoxCall call)
    {
        call.parent = parent;
        call.modal = false;
        EXPECT_EQ(generation.pop(call), 1u);
        return Box();
    }
    static void Close(const ShownBox& box) { ::DestroyWindow(box.Window()); }

    // Opens a modal box over the parent and gives its code.
    unsigned Run(const Generation& generation, BoxCall call)
    {
        call.parent = parent;
        return generation.pop(call);
    }

    ShownBox Box() const { return ShownBox::Over(parent.GetHWND()); } // the one over the parent

    void UseSkin(const std::wstring& skin)
    {
        for (const auto& generation : kGenerations)
            skins.Write(generation.skinFile, skin);
    }

    // The objects that have or had a window, of those that were made in this test.
    int Objects() const { return Managers() - m_managers; }

    DialogSkins skins;
    DialogParent parent;

private:
    static int Managers() { return DuiLib::CPaintManagerUI::GetPaintManagers()->GetSize(); }
    static void ForgetTexts()
    {
        auto* const texts = DuiLib::CResourceManager::GetInstance();
        texts->SetTextQueryInterface(nullptr);
        texts->ResetTextMap();
        texts->SetLanguage(L"");
    }

    const int m_managers = Managers();
};

} // namespace test

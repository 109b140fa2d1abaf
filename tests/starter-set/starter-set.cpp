// An application whose dialogs are the installed starter set: opens each of them and closes it by
// its own button.
#include <quillet/quillet.h>

#include <cstdio>
#include <filesystem>
#include <functional>
#include <string>

using namespace DuiLib;

namespace {

class Question : public ConfirmationWindow {
public:
    using ConfirmationWindow::ConfirmationWindow;

protected:
    LPCTSTR GetWindowClassName() const override { return L"StarterSetQuestion"; }
    CDuiString GetSkinFile() override { return L"common/Confirmation.xml"; }
};

// Clicks a button of the thread's dialog of that class, once it is there.
class Clicker {
public:
    Clicker(const wchar_t* windowClass, const wchar_t* button)
        : m_class(windowClass), m_button(button)
    {
        s_clicker = this;
        m_timer = ::SetTimer(nullptr, 0, 10, [](HWND, UINT, UINT_PTR, DWORD) { s_clicker->Try(); });
    }
    ~Clicker() { ::KillTimer(nullptr, m_timer); }
    Clicker(const Clicker&) = delete;
    Clicker& operator=(const Clicker&) = delete;

private:
    void Try()
    {
        const HWND window = ::FindWindowW(m_class, nullptr);
        if (!window || !::IsWindowVisible(window))
            return;
        const CStdPtrArray& managers = *CPaintManagerUI::GetPaintManagers();
        for (int i = 0; i < managers.GetSize(); i++) {
            auto& manager = *static_cast<CPaintManagerUI*>(managers[i]);
            CControlUI* const button = manager.FindControl(m_button);
            if (manager.GetPaintWindow() == window && button)
                button->Activate();
        }
    }

    static inline Clicker* s_clicker = nullptr;
    const wchar_t* m_class;
    const wchar_t* m_button;
    UINT_PTR m_timer;
};

int g_failures = 0;

void Expect(bool holds, const char* what)
{
    if (!holds) {
        std::printf("not so: %s\n", what);
        g_failures++;
    }
}

unsigned PopBox(unsigned type)
{
    const Clicker clicker(L"UIIMessageBox", L"btn_cancel");
    return UIIMessageBox::PopMessageBox(nullptr, L"", L"Text", L"", L"", type, nullptr, true, true,
                                        false);
}

} // namespace

int main()
{
    ULONG_PTR gdiplus = 0;
    const Gdiplus::GdiplusStartupInput input;
    Gdiplus::GdiplusStartup(&gdiplus, &input, nullptr);

    wchar_t program[MAX_PATH]{};
    ::GetModuleFileNameW(nullptr, program, MAX_PATH);
    const auto skin = std::filesystem::path(program).parent_path() / L"skin";
    CPaintManagerUI::SetInstance(::GetModuleHandleW(nullptr));
    CPaintManagerUI::SetResourcePath((skin.wstring() + L"\\").c_str());
    auto& texts = *CResourceManager::GetInstance();
    texts.SetLanguage(L"de-DE");
    Expect(texts.LoadLanguage(L"common/languages/de-DE.xml") != FALSE, "the texts are there");
    Expect(texts.GetText(L"IDS_MAIN_Inforation_Cancel") == L"Abbrechen", "they are German");

    Expect(PopBox(0) == IDCANCEL, "a message box gives the code of its button");
    {
        const Clicker clicker(L"UIMessageBox", L"btn_ok");
        Expect(UIMessageBox::PopMessageBox(nullptr, L"", L"", L"", L"", 4, nullptr, true, true,
                                           false) == IDOK,
               "so does one of the first generation");
    }
    {
        const Clicker clicker(L"PromptWnd", L"close");
        Expect(PromptWnd::PopMessageBox(nullptr, L"", L"") == IDCLOSE, "and a prompt");
    }
    {
        const Clicker clicker(L"StarterSetQuestion", L"reject");
        Question question(nullptr, L"Question", false);
        question.ShowWindow();
        Expect(!question.IsConfirmation(), "a confirmation knows its answer");
    }
    {
        bool worked = false;
        CommonLoadingWindow loading(nullptr, L"Working", false);
        loading.RegitsterWaitingEvent([&worked] { worked = true; });
        loading.ShowWindow();
        Expect(worked, "the loading window works");
    }
    {
        UIInfoBox toast(L"Done");
        LoadingWindow loading(L"Loading");
        UIViewContacts notice(L"c:\\file.txt");
        for (CWindowWnd* const window :
             std::initializer_list<CWindowWnd*>{&toast, &loading, &notice}) {
            Expect(window->Create(nullptr, L"", WS_POPUP, WS_EX_TOOLWINDOW) != nullptr,
                   "every other window opens");
            ::DestroyWindow(window->GetHWND());
        }
    }
    Gdiplus::GdiplusShutdown(gdiplus);
    return g_failures;
}

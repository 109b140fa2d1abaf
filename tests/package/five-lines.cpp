// An application as short as it gets: a DPI-aware window with a skin, which closes itself at once.
#include <quillet/quillet.h>

class HelloWindow : public DuiLib::WindowImplBaseEx {
    LPCTSTR GetWindowClassName() const override { return L"Hello"; }
    DuiLib::CDuiString GetSkinFile() override
    {
        return L"<Window size=\"320,200\"><VerticalLayout><Label name=\"greeting\" text=\"Hello\"/>"
               L"</VerticalLayout></Window>";
    }
    void OnFinalMessage(HWND) override { ::PostQuitMessage(0); }

public:
    bool Greets() { return m_pm.FindControl(L"greeting") != nullptr; }
};

int main()
{
    HelloWindow window;
    window.Create(nullptr, L"Hello", UI_WNDSTYLE_FRAME, 0);
    const bool greets = window.Greets();
    window.Close();
    DuiLib::CPaintManagerUI::MessageLoop();
    return greets ? 0 : 1;
}

#include "gallery/MaskedDialog.h"

#include <memory>

namespace gallery {

using namespace DuiLib;

namespace {

constexpr const wchar_t* kSkin = L"windows/masked.xml";

class DialogController : public UIController {
public:
    explicit DialogController(CPaintManagerUI& main) : m_main(main) {}

    // That of the main window, whatever the monitor asks for. A new window has just set the scale
    // of the process to its own.
    void TakeScale()
    {
        const auto percent = static_cast<int>(m_main.GetDPIObj()->GetScale());
        const int dpi = ::MulDiv(percent, USER_DEFAULT_SCREEN_DPI, 100);
        CResourceManagerEx::GetInstance()->SetScale(static_cast<unsigned>(dpi));
        GetPaintManagerUI().SetDPI(dpi);
    }

protected:
    void OnInit() override
    {
        const TFontInfo& font = *m_main.GetDefaultFontInfo();
        GetPaintManagerUI().SetDefaultFont(font.sFontName, font.iSize, false, false, false, false);
        ListenClickEvent(GetControl(L"dialog.ok"), [this] { OnCloseX(IDOK); });
        ListenClickEvent(GetControl(L"dialog.cancel"), [this] { OnCloseX(IDCANCEL); });
    }
    void OnKeyDown(UINT key) override
    {
        if (key == VK_ESCAPE)
            OnCloseX(IDCANCEL);
    }

private:
    CPaintManagerUI& m_main; // of the owner's owner, which outlives this window
};

} // namespace

bool MaskedDialog::Open(HWND parent, CPaintManagerUI& main, bool keepTitle)
{
    const auto controller = std::make_shared<DialogController>(main);
    m_window.emplace();
    m_window->AddUIController(controller);
    m_handle = m_window->Create(parent, L"Dialog", kSkin, WS_POPUP, 0, true, keepTitle);
    if (!m_handle)
        return false;
    controller->TakeScale();
    Follow();
    return true;
}

UINT MaskedDialog::ShowModal()
{
    return m_window ? m_window->ShowModal() : 0;
}

void MaskedDialog::Show()
{
    if (m_window)
        m_window->ShowWindow(true);
}

void MaskedDialog::Close()
{
    if (m_window && m_window->IsWindow())
        ::DestroyWindow(m_handle);
    m_window.reset();
}

void MaskedDialog::Follow()
{
    if (!m_window || !m_window->IsWindow())
        return;
    ::SendMessageW(m_window->GetMaskWnd(), WM_MOVE, 0, 0);
    m_window->CenterWindow();
}

} // namespace gallery

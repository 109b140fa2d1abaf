#include "gallery/MaskedDialog.h"

#include "gallery/ShownDialog.h"

#include <memory>

namespace gallery {

using namespace DuiLib;

namespace {

constexpr const wchar_t* kSkin = L"windows/masked.xml";

class DialogController : public UIController {
public:
    using UIController::GetPaintManagerUI;

protected:
    void OnInit() override
    {
        ListenClickEvent(GetControl(L"dialog.ok"), [this] { OnCloseX(IDOK); });
        ListenClickEvent(GetControl(L"dialog.cancel"), [this] { OnCloseX(IDCANCEL); });
    }
    void OnKeyDown(UINT key) override
    {
        if (key == VK_ESCAPE)
            OnCloseX(IDCANCEL);
    }
};

} // namespace

bool MaskedDialog::Open(HWND parent, CPaintManagerUI& main, bool keepTitle)
{
    const auto controller = std::make_shared<DialogController>();
    m_window.emplace();
    m_window->AddUIController(controller);
    m_handle = m_window->Create(parent, L"Dialog", kSkin, WS_POPUP, 0, true, keepTitle);
    if (!m_handle)
        return false;
    TakeLookOf(main, controller->GetPaintManagerUI());
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

#include "gallery/GalleryWindow.h"
#include "gallery/ShownDialog.h"
#include "gallery/pages/Pages.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace gallery {

namespace {

using namespace DuiLib;

constexpr const wchar_t* kDialog = L"windows/dialog.xml";
constexpr const wchar_t* kLayered = L"windows/layered.xml";
constexpr const wchar_t* kSecond = L"windows/second.xml";

enum Scene { kOpenDialog, kOpenLayered, kOpenSecond, kSceneCount };

// A window that a demonstration opens; it deletes itself.
class OpenedWindow : public WindowImplBaseEx {
public:
    // Null when there is no window.
    static OpenedWindow* Open(const wchar_t* skin, CPaintManagerUI& main, HWND owner)
    {
        // One that was refused late has deleted itself, one that was refused at once has not.
        bool isGone = false;
        auto window = std::unique_ptr<OpenedWindow>(new OpenedWindow(skin, main));
        window->m_isGone = &isGone;
        const bool isOpen =
            window->Create(owner, L"Quillet", WS_POPUP, WS_EX_TOOLWINDOW) != nullptr;
        if (isGone)
            window.release();
        if (!isOpen)
            return nullptr;
        window->m_isGone = nullptr;
        window->CenterWindow();
        return window.release();
    }
    ~OpenedWindow() override
    {
        if (m_isGone)
            *m_isGone = true;
    }

    // WindowImplBaseEx:
    void InitWindow() override { m_uDpi = TakeLookOf(m_main, m_pm); }
    void Notify(TNotifyUI& notification) override
    {
        if (notification.sType != DUI_MSGTYPE_CLICK) {
            WindowImplBaseEx::Notify(notification);
            return;
        }
        const CDuiString name = notification.pSender->GetName();
        if (name == L"windows.ok")
            Close(IDOK);
        else if (name == L"windows.cancel")
            Close(IDCANCEL);
        else if (name == L"windows.again")
            OpenAgain();
    }
    void OnFinalMessage(HWND window) override
    {
        WindowImplBaseEx::OnFinalMessage(window);
        delete this;
    }

protected:
    LPCTSTR GetWindowClassName() const override { return L"QuilletGalleryOpened"; }
    CDuiString GetSkinFile() override { return m_skin.c_str(); }

private:
    OpenedWindow(const wchar_t* skin, CPaintManagerUI& main) : m_skin(skin), m_main(main) {}

    void OpenAgain()
    {
        if (auto* const nested = Open(m_skin.c_str(), m_main, m_hWnd))
            nested->ShowModal();
    }

    std::wstring m_skin;
    CPaintManagerUI& m_main; // of the owner, which outlives this window
    bool* m_isGone = nullptr;
};

const wchar_t* NameOf(UINT message)
{
    switch (message) {
    case UIMSG_DRAG:
        return L"UIMSG_DRAG";
    case UIMSG_DRAGENTER:
        return L"UIMSG_DRAGENTER";
    case UIMSG_DRAGLEAVE:
        return L"UIMSG_DRAGLEAVE";
    case UIMSG_DRAGOVER:
        return L"UIMSG_DRAGOVER";
    case UIMSG_DRAGRELEASE:
        return L"UIMSG_DRAGRELEASE";
    default:
        return nullptr;
    }
}

class ToolkitWindowsPage : public Page, public IMessageFilterUI {
public:
    using Page::Page;

    LRESULT MessageHandler(UINT message, WPARAM wParam, LPARAM lParam, bool&) override
    {
        const wchar_t* const name = NameOf(message);
        if (!name)
            return 0;
        const auto& drag = *reinterpret_cast<TDragDropUI*>(wParam);
        CDuiString line;
        line.Format(L"%s  (%d, %d)  %s", name, GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam),
                    drag.pControl ? drag.pControl->GetName().GetData() : L"");
        SetText(L"windows.event", line);
        if (drag.pControl && drag.pControl->IsDropEnabled() && message != UIMSG_DRAGLEAVE)
            *drag.pdwEffect = DROPEFFECT_COPY;
        return 0;
    }

    int Scenes() const override { return kSceneCount; }
    void OpenScene(int scene) override
    {
        constexpr const wchar_t* kSkins[] = {kDialog, kLayered, kSecond};
        Open(kSkins[scene]);
    }
    void CloseScene() override
    {
        for (const HWND window : m_opened) {
            if (::IsWindow(window))
                ::DestroyWindow(window);
        }
        m_opened.clear();
    }

protected:
    void Show() override
    {
        m_hasOle = SUCCEEDED(::OleInitialize(nullptr));
        GetPaintManagerUI().AddMessageFilter(this);
        EnableDragDrop(true);
        OnClickOf(L"windows.modal", [this] { OpenModal(); });
        OnClickOf(L"windows.layered", [this] { Open(kLayered); });
        OnClickOf(L"windows.second", [this] { Open(kSecond); });
    }
    void Hide() override
    {
        CloseScene();
        EnableDragDrop(false);
        GetPaintManagerUI().RemoveMessageFilter(this);
        if (std::exchange(m_hasOle, false))
            ::OleUninitialize();
    }

private:
    void OpenModal()
    {
        const HWND owner = Window().GetHWND();
        auto* const dialog = OpenedWindow::Open(kDialog, Window().Manager(), owner);
        if (!dialog)
            return;
        const UINT result = dialog->ShowModal();
        if (IsShown())
            SetText(L"windows.event", (L"ShowModal: " + std::to_wstring(result)).c_str());
    }

    void Open(const wchar_t* skin)
    {
        auto* const window = OpenedWindow::Open(skin, Window().Manager(), Window().GetHWND());
        if (!window)
            return;
        window->ShowWindow();
        m_opened.push_back(window->GetHWND());
    }

    bool m_hasOle = false;
    std::vector<HWND> m_opened;
};

} // namespace

std::shared_ptr<Page> MakeToolkitWindowsPage(GalleryWindow& window)
{
    return std::make_shared<ToolkitWindowsPage>(window);
}

} // namespace gallery

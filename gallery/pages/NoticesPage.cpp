#include "gallery/GalleryWindow.h"
#include "gallery/ShownDialog.h"
#include "gallery/pages/Pages.h"

#include <memory>
#include <string>

namespace gallery {

namespace {

using namespace DuiLib;

// A file that is there for certain.
std::wstring OwnSkin()
{
    return (CPaintManagerUI::GetResourcePath() + L"gallery.xml").GetData();
}

class Toast : public Shown<UIInfoBox> {
public:
    static void Pop(OpenDialogs& open, const std::wstring& text)
    {
        auto* const toast = new Toast(open, text);
        const std::weak_ptr<const void> life = toast->Life();
        const bool isOpen =
            toast->Create(open.Owner(), L"", WS_POPUP, WS_EX_TOPMOST | WS_EX_TOOLWINDOW) != nullptr;
        // One that was refused late has deleted itself.
        if (isOpen)
            toast->OnSetWndPos();
        else if (!life.expired())
            delete toast;
    }

private:
    using Shown::Shown;
};

class NoticesPage : public Page {
public:
    using Page::Page;

    int Scenes() const override { return 1; }
    void OpenScene(int) override
    {
        Shown<PromptWnd>::PopModeless(m_open, m_open.Owner(), TextOf(L"notices.prompt.title"),
                                      TextOf(L"notices.prompt.text"));
        Shown<UIViewContacts>::PopModeless(m_open, OwnSkin());
        m_open.PlaceSideBySide();
        OpenToast();
    }
    void CloseScene() override { m_open.CloseAll(); }

protected:
    void Show() override
    {
        OnClickOf(L"notices.toast", [this] { OpenToast(); });
        OnClickOf(L"notices.prompt", [this] { OpenPrompt(); });
        OnClickOf(L"notices.contacts", [this] { OpenContacts(); });
        OnClickOf(L"notices.folder", [this] { ShowInFolder(); });
        SetText(L"notices.path", OwnSkin().c_str());
    }
    void Hide() override { CloseScene(); }

private:
    void OpenToast() { Toast::Pop(m_open, TextOf(L"notices.toast.text")); }

    void OpenPrompt()
    {
        const unsigned code =
            Shown<PromptWnd>::PopModal(m_open, m_open.Owner(), TextOf(L"notices.prompt.title"),
                                       TextOf(L"notices.prompt.text"));
        ShowResult(L"PromptWnd: " + std::to_wstring(code));
    }

    void OpenContacts()
    {
        const unsigned code = Shown<UIViewContacts>::PopModal(m_open, OwnSkin());
        ShowResult(L"UIViewContacts: " + std::to_wstring(code));
    }

    void ShowInFolder()
    {
        ShowResult(ShowFileInFolder(OwnSkin()) ? L"ShowFileInFolder: true"
                                               : L"ShowFileInFolder: false");
    }

    void ShowResult(const std::wstring& text) { SetText(L"notices.result", text.c_str()); }

    OpenDialogs m_open{Window()};
};

} // namespace

std::shared_ptr<Page> MakeNoticesPage(GalleryWindow& window)
{
    return std::make_shared<NoticesPage>(window);
}

} // namespace gallery

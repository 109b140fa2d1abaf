#include "gallery/pages/Pages.h"

namespace gallery {

namespace {

using namespace DuiLib;

class ToolkitTreePage : public Page {
public:
    using Page::Page;

    void Notify(TNotifyUI& notification) override
    {
        auto* const tree = Find<CTreeViewUI>(L"tree.parts");
        if (!notification.pSender || !tree)
            return;
        const CDuiString name = notification.pSender->GetName();
        if (notification.sType == DUI_MSGTYPE_SELECTCHANGED && name == L"tree.checks")
            tree->SetVisibleCheckBtn(notification.wParam != FALSE);
        else if (notification.sType == DUI_MSGTYPE_ITEMACTIVATE ||
                 notification.sType == DUI_MSGTYPE_TREEITEMDBCLICK)
            ShowEvent(notification.sType, notification.pSender);
    }

protected:
    void Show() override
    {
        OnClickOf(L"tree.open", [this] { Expand(true); });
        OnClickOf(L"tree.close", [this] { Expand(false); });
    }

private:
    void Expand(bool expand)
    {
        if (auto* const tree = Find<CTreeViewUI>(L"tree.parts"))
            tree->SetItemExpand(expand);
    }
    void ShowEvent(const CDuiString& type, CControlUI* sender) const
    {
        if (auto* const node = dynamic_cast<CTreeNodeUI*>(sender))
            SetText(L"tree.event", type + L" " + node->GetItemText());
    }
};

} // namespace

std::shared_ptr<Page> MakeToolkitTreePage(GalleryWindow& window)
{
    return std::make_shared<ToolkitTreePage>(window);
}

} // namespace gallery

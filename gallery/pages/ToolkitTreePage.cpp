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
        if (notification.sType == DUI_MSGTYPE_CLICK && name == L"tree.open")
            tree->SetItemExpand(true);
        else if (notification.sType == DUI_MSGTYPE_CLICK && name == L"tree.close")
            tree->SetItemExpand(false);
        else if (notification.sType == DUI_MSGTYPE_SELECTCHANGED && name == L"tree.checks")
            tree->SetVisibleCheckBtn(notification.wParam != FALSE);
        else if (notification.sType == DUI_MSGTYPE_ITEMACTIVATE ||
                 notification.sType == DUI_MSGTYPE_TREEITEMDBCLICK)
            ShowEvent(notification);
    }

private:
    void ShowEvent(const TNotifyUI& notification) const
    {
        auto* const node = dynamic_cast<CTreeNodeUI*>(notification.pSender);
        if (node)
            SetText(L"tree.event", notification.sType + L" " + node->GetItemText());
    }
};

} // namespace

std::unique_ptr<Page> MakeToolkitTreePage(GalleryWindow& window)
{
    return std::make_unique<ToolkitTreePage>(window);
}

} // namespace gallery

#pragma once

#include "Core/UIExport.h"
#include "Core/UIPlatform.h"

#include "Control/UICheckBox.h"
#include "Control/UILabel.h"
#include "Control/UIList.h"
#include "Control/UIListElement.h"
#include "Control/UIOption.h"
#include "Core/UIInterfaces.h"
#include "Layout/UIHorizontalLayout.h"

#include <memory>
#include <vector>

namespace DuiLib {

class CTreeViewUI;

// A node of a tree: an indentation, a folder box, a check box and a text side by side, in the row
// of the tree view that the node is in. XML class "TreeNode".
//
// A node is closed while its folder box is selected; at first it is open. Its sub-nodes follow it
// as rows of the same view. Outside a view a node owns its sub-nodes; inside, the view does.
//
// Colours that a node lacks (0) are those of the view. Without a height of its own a node is as
// high as a line of text and 8 pixels more. The parts are made when they are asked for or first
// come in sight, so a node that is never seen costs little.
class UILIB_API CTreeNodeUI : public CListContainerElementUI {
public:
    static CControlUI* CreateControl();

    // The parent is where Add of the view will put the node.
    explicit CTreeNodeUI(CTreeNodeUI* parent = NULL);
    ~CTreeNodeUI() override;

    // A node becomes a sub-node, any other control comes into the row, behind the text. AddAt
    // counts among the sub-nodes or among the controls in the row.
    bool Add(CControlUI* control) override;
    bool AddAt(CControlUI* control, int index) override;
    bool Remove(CControlUI* control) override;
    bool RemoveAt(int index) override; // a sub-node
    void RemoveAll() override;         // the sub-nodes

    // As the last sub-node. False for null, for a node that is in a tree already, and for this node
    // and those that it is below.
    bool AddChildNode(CTreeNodeUI* node);
    bool RemoveAt(CTreeNodeUI* node); // a sub-node of this one, with what is below it

    // Where the node is to be added; without effect on one that is in a tree.
    void SetParentNode(CTreeNodeUI* parent);
    CTreeNodeUI* GetParentNode();
    long GetCountChild();
    CTreeNodeUI* GetChildNode(int index); // null out of range
    bool IsHasChild() const;
    CStdPtrArray GetTreeNodes(); // the sub-nodes, as CTreeNodeUI*

    long GetTreeLevel(); // 0 at the top
    int GetTreeIndex();  // the row in the view; -1 outside
    int GetNodeIndex();  // among the nodes of the same parent; -1 without any

    // Adds a node that is in no tree at the end of the view.
    void SetTreeView(CTreeViewUI* view);
    CTreeViewUI* GetTreeView();

    void SetItemText(LPCTSTR text);
    CDuiString GetItemText();

    // The check box of this node alone.
    void CheckBoxSelected(bool selected);
    bool IsCheckBoxSelected() const;

    // Whether the sub-nodes are shown, as far as this node has a say: it is open.
    void SetVisibleTag(bool visible);
    bool GetVisibleTag();

    // As the view has it, until set.
    void SetVisibleFolderBtn(bool visible);
    bool GetVisibleFolderBtn();
    void SetVisibleCheckBtn(bool visible);
    bool GetVisibleCheckBtn();

    // ARGB, 0 = the view's.
    void SetItemTextColor(DWORD color);
    DWORD GetItemTextColor() const;
    void SetItemHotTextColor(DWORD color);
    DWORD GetItemHotTextColor() const;
    void SetSelItemTextColor(DWORD color);
    DWORD GetSelItemTextColor() const;
    void SetSelItemHotTextColor(DWORD color);
    DWORD GetSelItemHotTextColor() const;

    // The parts. Never null.
    CHorizontalLayoutUI* GetTreeNodeHoriznotal() const;
    CLabelUI* GetDottedLine() const;
    CCheckBoxUI* GetFolderButton() const;
    CCheckBoxUI* GetCheckBox() const;
    COptionUI* GetItemButton() const;

    // IListItemUI:
    bool Select(bool select = true) override;
    bool SelectMulti(bool select = true) override;
    bool IsExpanded() const override;
    bool Expand(bool expand = true) override;

    // CControlUI:
    LPCTSTR GetClass() const override;
    LPVOID GetInterface(LPCTSTR name) override;
    CDuiString GetText() const override;
    void SetText(LPCTSTR text) override;
    void SetResourceText(bool resource) override;
    void SetVisible(bool visible = true) override; // with what is below it
    void SetInternVisible(bool visible = true) override;
    int GetMinWidth() const override;
    SIZE EstimateSize(SIZE available) override;
    void SetPos(RECT rect, bool invalidate = true) override;
    void SetAttribute(LPCTSTR name, LPCTSTR value) override;

protected:
    // CListContainerElementUI:
    void NotifyDoubleClick() override;

private:
    friend class CTreeViewUI;
    struct Parts;
    class Indent;
    class FolderBox;
    class CheckBox;
    class Item;

    Parts& MakeParts() const;
    void ConnectParts(bool connect);
    void PartsChanged();
    void FolderBoxChanged(); // selected by whoever
    void CheckBoxChanged();
    void SetClosed(bool closed);
    void StoreClosed(bool closed);
    bool ShowsFolder() const;
    bool ShowsCheckBox() const;
    DWORD ShownTextColor() const;

    CStdPtrArray& Siblings();
    void Link(CTreeNodeUI* parent, CTreeViewUI* view, int index);
    void Unlink();
    void Announce(CTreeNodeUI* parent);
    bool IsBelow(const CTreeNodeUI& node) const; // or that node itself
    bool InsertChild(CTreeNodeUI* node, int index);
    CTreeNodeUI* LastBelow(); // the last row of this node and what is below it
    std::vector<CTreeNodeUI*> ListSubtree();
    bool IsShownByParent() const;

    CTreeViewUI* m_pTreeView = nullptr;
    CTreeNodeUI* m_pParentNode = nullptr;
    CStdPtrArray m_aNodes;
    std::unique_ptr<std::vector<CTreeNodeUI*>> m_pAnnounced; // named this parent, not added yet
    std::unique_ptr<Parts> m_pParts;
    DWORD m_dwItemTextColor = 0;
    DWORD m_dwItemHotTextColor = 0;
    DWORD m_dwSelItemTextColor = 0;
    DWORD m_dwSelItemHotTextColor = 0;
    bool m_bIsLinked = false; // among the nodes of its parent or of the view
    bool m_bIsShown = true;   // every node above is open
    bool m_bIsClosed = false;
    bool m_bIsChecked = false;
    signed char m_nFolderVisible = -1; // -1: as in the view
    signed char m_nCheckVisible = -1;
};

// A list whose rows are the nodes of a tree. XML class "TreeView".
//
// Rows come in the order of the tree, also those that a closed node hides. A node comes and goes
// with everything below it. Where a node is asked for, one of another view counts as none.
//
// Keys besides those of a list: Right opens a node or goes to its first sub-node, Left closes it or
// goes to its parent, Space works the check box where it is shown.
//
// Notifications: those of a list, "selectchanged" of a box that the user worked, and
// "treeitemdbclick" from a node after "itemactivate".
class UILIB_API CTreeViewUI : public CListUI, public INotifyUI {
public:
    static CControlUI* CreateControl();

    CTreeViewUI();
    ~CTreeViewUI() override;

    // At the end of the top level, or of the parent that the node was given. False for null and for
    // a node that is in a tree already.
    virtual bool Add(CTreeNodeUI* node);
    // In the place of the node in that row, which moves down; at the count of rows, at the end of
    // the top level. The row, or -1.
    virtual long AddAt(CTreeNodeUI* node, int index);
    virtual bool AddAt(CTreeNodeUI* node, CTreeNodeUI* before); // beside that node, in front of it
    virtual bool Remove(CTreeNodeUI* node);
    bool RemoveAt(int index) override; // the node in that row
    void RemoveAll() override;

    // For the boxes and the nodes: the argument is their TNotifyUI. True.
    virtual bool OnCheckBoxChanged(void* param); // what is below and above the node follows
    virtual bool OnFolderChanged(void* param);
    virtual bool OnDBClickItem(void* param); // sends it on
    // Does what belongs to a notification of a part of one of the nodes.
    void Notify(TNotifyUI& notification) override;

    // A node with all below it, or every node; a node above is checked when everything directly
    // below it is. Sends nothing. False for a node of another view.
    virtual bool SetItemCheckBox(bool selected, CTreeNodeUI* node = NULL);
    // One node, or every node. Where this hides the selected node, the one that closed is selected.
    virtual void SetItemExpand(bool expand, CTreeNodeUI* node = NULL);

    // For all nodes; at first with folder boxes, without check boxes.
    virtual void SetVisibleFolderBtn(bool visible);
    virtual bool GetVisibleFolderBtn();
    virtual void SetVisibleCheckBtn(bool visible);
    virtual bool GetVisibleCheckBtn();
    virtual void SetItemMinWidth(UINT width); // of the text; design pixels, 0 = none
    virtual UINT GetItemMinWidth();

    // For nodes that have no colour of their own. ARGB, 0 = as in a list.
    virtual void SetItemTextColor(DWORD color);
    virtual void SetItemHotTextColor(DWORD color);
    virtual void SetSelItemTextColor(DWORD color);
    virtual void SetSelItemHotTextColor(DWORD color);

    // CListUI:
    UINT GetListType() override;
    bool ExpandItem(int index, bool expand = true) override;

    // CContainerUI: only nodes become rows, and they stay where they are in the tree.
    bool Add(CControlUI* control) override;
    bool AddAt(CControlUI* control, int index) override;
    bool Remove(CControlUI* control) override;
    bool SetItemIndex(CControlUI* control, int index) override;

    // CControlUI:
    LPCTSTR GetClass() const override;
    LPVOID GetInterface(LPCTSTR name) override;
    void SetAttribute(LPCTSTR name, LPCTSTR value) override;

private:
    friend class CTreeNodeUI;

    // CListUI:
    bool HasOrderOfItsOwn() const override;
    bool DoRowKey(const TEventUI& event) override;

    CTreeNodeUI* NodeAt(int index) const;
    CTreeNodeUI* NodeOf(CControlUI* part) const;
    bool Insert(CTreeNodeUI* node, CTreeNodeUI* parent, int index);
    bool ShowHeader();
    void RemoveRows(int first, int count);
    void ForgetNodes(int first, int count);
    void ShowRows(int first, int last);
    void ShowBelow(CTreeNodeUI& node);
    void CheckAbove(CTreeNodeUI* node);

    CStdPtrArray m_aTopNodes;
    DWORD m_dwItemTextColor = 0;
    DWORD m_dwItemHotTextColor = 0;
    DWORD m_dwSelItemTextColor = 0;
    DWORD m_dwSelItemHotTextColor = 0;
    UINT m_uItemMinWidth = 0;
    bool m_bVisibleFolderBtn = true;
    bool m_bVisibleCheckBtn = false;
};

} // namespace DuiLib

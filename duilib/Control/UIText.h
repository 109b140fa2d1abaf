#pragma once

#include "Control/UILabel.h"

namespace DuiLib {

// A word-wrapped text with links.
//
// XML class "Text". With markup shown, `<a content>text</a>` is a link: a hand cursor, and on
// release of the left button a "link" notification with wParam = the link's index.
class UILIB_API CTextUI : public CLabelUI {
public:
    static CControlUI* CreateControl();

    CTextUI();
    ~CTextUI() override;
    CTextUI(const CTextUI&) = default;
    CTextUI& operator=(const CTextUI&) = default;

    // Content of a link that was drawn last; null when there is no such link.
    CDuiString* GetLinkContent(int index);

    // CControlUI:
    LPCTSTR GetClass() const override;
    LPVOID GetInterface(LPCTSTR name) override;
    UINT GetControlFlags() const override;
    void SetText(LPCTSTR text) override;
    void DoEvent(TEventUI& event) override;
    SIZE EstimateSize(SIZE available) override;
    void PaintText(HDC dc) override;

protected:
    enum { MAX_LINK = 8 };
    int m_nLinks;
    RECT m_rcLinks[MAX_LINK];
    CDuiString m_sLinks[MAX_LINK];
    int m_nHoverLink; // -1 = none

private:
    int LinkAt(POINT point) const;
    void SetHoverLink(int index);
};

} // namespace DuiLib

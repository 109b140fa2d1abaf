#pragma once

#include <UIlib.h>

#include <string>
#include <vector>

#include "quillet/Export.h"
#include "quillet/window/WindowImplBaseEx.h"

namespace Quillet::Dialogs {
struct LineRules;
}

// A modal question: a header, a content that may hold one coloured link, and two answers.
//
// A derived class supplies the window class and the skin, which has controls named "confirm",
// "reject" and "close" (buttons), "header" and "content" (labels). Texts are set before
// ShowWindow; the answer is read after it:
//
//     Question question(parent, L"Delete", false);
//     question.ReSetShowContent(L"Delete the picture?");
//     question.ShowWindow();
//     if (question.IsConfirmation()) ...
//
// The content is broken into lines at spaces. "\u200b" and "\n" spelled out, as they stand in
// language files, are a space and, with a link, the end of a line. The application owns the object
// and makes a new one for each question. Everything is called on the user-interface thread.
class QUILLET_API ConfirmationWindow : public DuiLib::WindowImplBaseEx {
public:
    // The flag is kept and has no meaning here.
    ConfirmationWindow(HWND hParent, const std::wstring& strTitle, bool bFlag);
    ~ConfirmationWindow() override;

    // Creates the window and returns when it has closed; at once when it cannot be created.
    void ShowWindow();

    // True unless the window was left by "reject", "close" or Escape: closing it in another way
    // confirms.
    bool IsConfirmation() const;
    void SetConfirmation(bool bConfirmation);

    // The most lines of a content without link, 0 for no limit.
    void SetMaxLineNums(const int& nMaxLineNums);

    // In device pixels, applied by ShowWindow; 0 and 0 leave the size to the skin.
    void SetWndSize(int width, int height);

    // Published: gives the parent of the window that size, at the top left of the screen.
    void ChangeWndSize();

    // Published: creates the window itself, hidden, and no mask.
    void CreateMaskLayer();

    void ReSetShowContent(const std::wstring& strContent);

    // Content, confirm text, reject text, header, tooltip; any other number of texts changes
    // nothing. An empty text leaves the skin's, an empty tooltip the content as the tooltip.
    void ReSetShowAllContent(const std::vector<std::wstring>& vecContent);

    // Changes the texts of a window that is shown; an empty one stays as it is. The content is not
    // broken into lines, and the tooltip only changes together with it.
    void RefreshShow(const std::wstring& content, const std::wstring& confirmText,
                     const std::wstring& rejectText, const std::wstring& header,
                     const std::wstring& toolTip);

    // WindowImplBaseEx:
    void Notify(DuiLib::TNotifyUI& msg) override;
    LRESULT HandleMessage(UINT uMsg, WPARAM wParam, LPARAM lParam) override;

    int m_nMaxLineNums = 0;
    bool m_bShowLink = false; // the content may hold a link; set it before ShowWindow
    int m_nLineCount = 0;     // of a content with link

protected:
    // WindowImplBaseEx:
    void InitWindow() override;

    void CloseWindow(); // and the mask

    // Break a content into lines: without link, with one, and into paragraphs of HTML text.
    // The first throws std::out_of_range for a text of up to four characters in a language that is
    // broken here, the second when a line could only be broken inside a tag.
    void ReContentText(std::wstring& text);
    void ShowLinkWndReContentText(std::wstring& text);
    void ReShowhtmlContentText(std::wstring& text);

    // Colours of a button, which may be null.
    void SetBlueButton(DuiLib::CButtonUI* pButton);
    void SetGrayButton(DuiLib::CButtonUI* pButton);

    // Null when the skin lacks them and before the window is created.
    DuiLib::CButtonUI* m_pConfirmBtn = nullptr;
    DuiLib::CButtonUI* m_pRejectBtn = nullptr;
    DuiLib::CButtonUI* m_pCloseBtn = nullptr;
    DuiLib::CLabelUI* m_pHeaderLabel = nullptr;
    DuiLib::CLabelUI* m_pContentLabel = nullptr;

    HWND m_hParent;
    std::wstring m_strTitle;
    bool m_bConfirmation = true;

    // Shades the parent; not owned. Closed together with this window.
    DuiLib::CWindowWnd* m_pMaskLayer = nullptr;
    bool m_bFlag;
    HWND m_hMaskParent = nullptr; // the owner instead of the parent, when set

    std::wstring m_strContent;
    std::wstring m_strHeader;
    std::wstring m_strConfirmText;
    std::wstring m_strRejectText;
    std::wstring m_strToolTip;
    int m_nWidth = 0;
    int m_nHeight = 0;

private:
    void CloseMaskLayer();
    void ContentReplcaeStr(const std::wstring& from, const std::wstring& to, std::wstring& text);
    bool FindHtmlLinkStrPos(int pos, const std::wstring& text);
    int GetFontWidth(std::wstring text); // of the content's font, in device pixels
    int GetNewLineCount(const std::wstring& text, const std::wstring& pattern);

    void InitButtons();
    void InitContent();
    Quillet::Dialogs::LineRules PlainRules();
    Quillet::Dialogs::LineRules LinkRules(const std::wstring& text); // keeps the reference
};

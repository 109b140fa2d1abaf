#include "quillet/dialogs/ConfirmationWindow.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "quillet/dialogs/ConfirmationText.h"
#include "quillet/dialogs/DialogResources.h"
#include "quillet/dialogs/DialogStyle.h"
#include "quillet/dialogs/SkinControl.h"
#include "quillet/dialogs/TextMeasure.h"

using namespace DuiLib;
using namespace Quillet::Dialogs;

namespace {

struct ButtonColours {
    DWORD normal, hot, pushed, text; // ARGB
};
constexpr ButtonColours kBlue{0xFF226BFF, 0xFF1E60E5, 0xFF1C5BD9, 0xFFFFFFFF};
constexpr ButtonColours kGray{0xFFF2F2F2, 0xFFE5E5E5, 0xFFD9D9D9, 0xFF226BFF};
constexpr DWORD kHeaderColour = 0xFF666666;

constexpr const wchar_t* kCloseNormal = L"common/CloseButton/normal.svg";
constexpr const wchar_t* kCloseHot = L"common/CloseButton/hot.svg";
constexpr const wchar_t* kClosePushed = L"common/CloseButton/pushed.svg";

constexpr int kContentWidth = 346; // design pixels

constexpr std::size_t kTextCount = 5;

bool IsOneOf(std::wstring_view language, std::initializer_list<std::wstring_view> languages)
{
    return std::find(languages.begin(), languages.end(), language) != languages.end();
}

// In these languages the label breaks the lines.
// Published: a content with link has a list of its own, without English.
bool IsBrokenByLabel(std::wstring_view language)
{
    return IsOneOf(language, {L"zh-CN", L"en-GB", L"en-US", L"th-TH"});
}
bool IsLinkBrokenByLabel(std::wstring_view language)
{
    return IsOneOf(language, {L"zh-CN", L"th-TH"});
}

void SetBackgrounds(CButtonUI& button, const ButtonColours& colours)
{
    button.SetBkColor(colours.normal);
    button.SetHotBkColor(colours.hot);
    button.SetPushedBkColor(colours.pushed);
}

void SetColours(CButtonUI* button, const ButtonColours& colours)
{
    if (!button)
        return;
    SetBackgrounds(*button, colours);
    button->SetTextColor(colours.text);
}

} // namespace

ConfirmationWindow::ConfirmationWindow(HWND hParent, const std::wstring& strTitle, bool bFlag)
    : m_hParent(hParent), m_strTitle(strTitle), m_bFlag(bFlag)
{
}

ConfirmationWindow::~ConfirmationWindow() = default;

void ConfirmationWindow::ShowWindow()
{
    CreateMaskLayer();
    if (!m_hWnd)
        return;
    // Published: a single 0 is a size.
    if (m_nWidth != 0 || m_nHeight != 0)
        ::MoveWindow(m_hWnd, 0, 0, m_nWidth, m_nHeight, FALSE);
    CenterWindow();
    ShowModal();
}

bool ConfirmationWindow::IsConfirmation() const
{
    return m_bConfirmation;
}

void ConfirmationWindow::SetConfirmation(bool bConfirmation)
{
    m_bConfirmation = bConfirmation;
}

void ConfirmationWindow::SetMaxLineNums(const int& nMaxLineNums)
{
    m_nMaxLineNums = nMaxLineNums;
}

void ConfirmationWindow::SetWndSize(int width, int height)
{
    m_nWidth = width;
    m_nHeight = height;
}

void ConfirmationWindow::ChangeWndSize()
{
    ::MoveWindow(::GetParent(m_hWnd), 0, 0, m_nWidth, m_nHeight, TRUE);
}

void ConfirmationWindow::CreateMaskLayer()
{
    const HWND owner = m_hMaskParent ? m_hMaskParent : m_hParent;
    Create(owner, m_strTitle.c_str(), kModalStyle, kModalExStyle, 0, 0, 0, 0);
}

void ConfirmationWindow::ReSetShowContent(const std::wstring& strContent)
{
    m_strContent = strContent;
}

void ConfirmationWindow::ReSetShowAllContent(const std::vector<std::wstring>& vecContent)
{
    if (vecContent.size() != kTextCount)
        return;
    m_strContent = vecContent[0];
    m_strConfirmText = vecContent[1];
    m_strRejectText = vecContent[2];
    m_strHeader = vecContent[3];
    m_strToolTip = vecContent[4];
}

void ConfirmationWindow::RefreshShow(const std::wstring& content, const std::wstring& confirmText,
                                     const std::wstring& rejectText, const std::wstring& header,
                                     const std::wstring& toolTip)
{
    SetTextUnlessEmpty(m_pContentLabel, content);
    if (m_pContentLabel && !content.empty() && !toolTip.empty())
        m_pContentLabel->SetToolTip(toolTip.c_str());
    SetTextUnlessEmpty(m_pConfirmBtn, confirmText);
    SetTextUnlessEmpty(m_pRejectBtn, rejectText);
    SetTextUnlessEmpty(m_pHeaderLabel, header);
    m_pm.Invalidate();
}

void ConfirmationWindow::InitWindow()
{
    WindowImplBaseEx::InitWindow();
    m_pConfirmBtn = FindSkinControl<CButtonUI>(m_pm, L"confirm");
    m_pRejectBtn = FindSkinControl<CButtonUI>(m_pm, L"reject");
    m_pCloseBtn = FindSkinControl<CButtonUI>(m_pm, L"close");
    m_pHeaderLabel = FindSkinControl<CLabelUI>(m_pm, L"header");
    m_pContentLabel = FindSkinControl<CLabelUI>(m_pm, L"content");
    InitButtons();
    if (m_pHeaderLabel) {
        m_pHeaderLabel->SetTextColor(kHeaderColour);
        SetTextUnlessEmpty(m_pHeaderLabel, m_strHeader);
    }
    if (m_pContentLabel)
        InitContent();
}

void ConfirmationWindow::InitButtons()
{
    if (m_pConfirmBtn) {
        SetBackgrounds(*m_pConfirmBtn, kBlue);
        // Published: the text colour of "confirm" is given to "close".
        if (m_pCloseBtn)
            m_pCloseBtn->SetTextColor(kBlue.text);
        SetTextUnlessEmpty(m_pConfirmBtn, m_strConfirmText);
    }
    if (m_pRejectBtn) {
        SetGrayButton(m_pRejectBtn);
        SetTextUnlessEmpty(m_pRejectBtn, m_strRejectText);
    }
    if (m_pCloseBtn) {
        m_pCloseBtn->SetNormalImage(kCloseNormal);
        m_pCloseBtn->SetPushedImage(kClosePushed);
        m_pCloseBtn->SetHotImage(kCloseHot);
    }
}

void ConfirmationWindow::InitContent()
{
    std::wstring content = m_strContent.empty() ? TextOf(m_pContentLabel->GetText()) : m_strContent;
    // Published: the tooltip has the content as it was before it is broken into lines.
    std::wstring toolTip = m_strToolTip.empty() ? content : m_strToolTip;
    if (m_bShowLink) {
        ShowLinkWndReContentText(content);
        ReShowhtmlContentText(content);
    } else {
        ReContentText(content);
    }
    m_pContentLabel->SetText(content.c_str());
    ContentReplcaeStr(L"\\u200b", L" ", toolTip);
    m_pContentLabel->SetToolTip(toolTip.c_str());
}

void ConfirmationWindow::Notify(TNotifyUI& msg)
{
    if (msg.sType == DUI_MSGTYPE_CLICK && msg.pSender) {
        const CDuiString name = msg.pSender->GetName();
        const bool confirms = name == L"confirm";
        if (confirms || name == L"reject" || name == L"close") {
            m_bConfirmation = confirms;
            CloseWindow();
            return;
        }
    }
    WindowImplBaseEx::Notify(msg);
}

LRESULT ConfirmationWindow::HandleMessage(UINT uMsg, WPARAM wParam, LPARAM lParam)
{
    // Published: the key is passed on as well.
    if (uMsg == WM_KEYDOWN && (wParam == VK_RETURN || wParam == VK_ESCAPE)) {
        m_bConfirmation = wParam == VK_RETURN;
        CloseWindow();
    }
    return WindowImplBaseEx::HandleMessage(uMsg, wParam, lParam);
}

void ConfirmationWindow::CloseWindow()
{
    Close(IDCLOSE);
    CloseMaskLayer();
}

void ConfirmationWindow::CloseMaskLayer()
{
    if (m_pMaskLayer && ::IsWindow(m_pMaskLayer->GetHWND())) {
        m_pMaskLayer->PostMessage(WM_CLOSE);
        m_pMaskLayer = nullptr;
    }
}

void ConfirmationWindow::ReContentText(std::wstring& text)
{
    ContentReplcaeStr(L"\\u200b", L" ", text);
    if (IsBrokenByLabel(Language()))
        return;
    BreakLines(text, PlainRules());
    MarkShortLastLine(text);
}

void ConfirmationWindow::ShowLinkWndReContentText(std::wstring& text)
{
    ContentReplcaeStr(L"\\u200b", L" ", text);
    ContentReplcaeStr(L"\\n", L"\r", text);
    if (!IsLinkBrokenByLabel(Language()))
        BreakLines(text, LinkRules(text));
}

void ConfirmationWindow::ReShowhtmlContentText(std::wstring& text)
{
    const bool brokenByLabel = IsLinkBrokenByLabel(Language());
    if (brokenByLabel)
        m_nLineCount = CountLines(text, LinkRules(text));
    text = AsParagraphs(text);
    if (!brokenByLabel)
        m_nLineCount = GetNewLineCount(text, L"<p>");
}

LineRules ConfirmationWindow::PlainRules()
{
    return {.widthOf = [this](const std::wstring& line) { return GetFontWidth(line); },
            .width = Scaled(kContentWidth),
            .isMarkup = [](std::size_t) { return false; },
            .maxLines = m_nMaxLineNums};
}

// Published: a content with link has no limit of lines.
LineRules ConfirmationWindow::LinkRules(const std::wstring& text)
{
    LineRules rules = PlainRules();
    rules.isMarkup = [this, &text](std::size_t position) {
        return FindHtmlLinkStrPos(static_cast<int>(position), text);
    };
    rules.maxLines = 0;
    return rules;
}

void ConfirmationWindow::SetBlueButton(CButtonUI* pButton)
{
    SetColours(pButton, kBlue);
}

void ConfirmationWindow::SetGrayButton(CButtonUI* pButton)
{
    SetColours(pButton, kGray);
}

void ConfirmationWindow::ContentReplcaeStr(const std::wstring& from, const std::wstring& to,
                                           std::wstring& text)
{
    ReplaceAll(from, to, text);
}

bool ConfirmationWindow::FindHtmlLinkStrPos(int pos, const std::wstring& text)
{
    return m_bShowLink && pos >= 0 && IsInLinkTag(text, static_cast<std::size_t>(pos));
}

int ConfirmationWindow::GetFontWidth(std::wstring text)
{
    const int font = m_pContentLabel ? m_pContentLabel->GetFont() : 0;
    return TextMeasure(m_pm.GetPaintDC(), m_pm.GetFont(font)).WidthOf(text);
}

int ConfirmationWindow::GetNewLineCount(const std::wstring& text, const std::wstring& pattern)
{
    return CountOf(pattern, text);
}

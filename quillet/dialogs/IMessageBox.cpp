#include "quillet/dialogs/IMessageBox.h"

#include <utility>

#include "quillet/dialogs/DialogResources.h"
#include "quillet/dialogs/MessageBoxFaces.h"
#include "quillet/dialogs/SkinControl.h"
#include "quillet/dialogs/TextMeasure.h"

namespace DuiLib {

using namespace Quillet::Dialogs;

namespace {

constexpr DWORD kSkyBlue = 0xFF00BFFF;
constexpr DWORD kRed = 0xFFFA2A2C;
constexpr DWORD kAzure = 0xFF007DFF;

constexpr const wchar_t* kOk = L"IDS_MAIN_PAGE_SettingsWindow_OK";
constexpr const wchar_t* kCancel = L"IDS_MAIN_Inforation_Cancel";

constexpr ButtonFaces kByType[] = {
    {{kSkyBlue, kOk}, {kSkyBlue, kCancel}},
    {{kRed, L"IDS_GALLERT_BTN_DELETE"}, {kSkyBlue, kCancel}},
    {{kRed, L"IDS_MAIN_PAGE_Close"}, {kSkyBlue, kCancel}},
    {{kSkyBlue, kOk}, {kSkyBlue, kCancel}},
    {{kRed, L"IDS_GALLERT_Transfer_Clear"}, {kAzure, kCancel}},
};

const MessageBoxFaces kFaces{
    .resolve = &TextOf,
    .onlyButton = kOk,
    .byType = kByType,
};

constexpr int kLineWidth = 400; // design pixels
constexpr wchar_t kBreak = L'\r';

} // namespace

unsigned int UIIMessageBox::PopMessageBox(HWND hParent, std::wstring strCaption,
                                          std::wstring strText, std::wstring strOkText,
                                          std::wstring strCancelText, unsigned int nType,
                                          bool* pbChecked, bool bShowCaption, bool bModal,
                                          bool bForceModal)
{
    auto* const box =
        new UIIMessageBox(hParent, std::move(strCaption), std::move(strText), std::move(strOkText),
                          std::move(strCancelText), nType, pbChecked, bShowCaption, bModal);
    return bForceModal || bModal ? RunModal(box, hParent) : RunModeless(box, hParent);
}

UIIMessageBox::UIIMessageBox(HWND hParent, std::wstring strCaption, std::wstring strText,
                             std::wstring strOkText, std::wstring strCancelText, unsigned int nType,
                             bool* pbChecked, bool bShowCaption, bool bModal)
    : MessageBoxWindow(L"MessageBox02.xml", hParent, std::move(strCaption), std::move(strText),
                       std::move(strOkText), std::move(strCancelText), nType, pbChecked,
                       bShowCaption, bModal)
{
}

UIIMessageBox::~UIIMessageBox() = default;

LPCTSTR UIIMessageBox::GetWindowClassName() const
{
    return L"UIIMessageBox";
}

void UIIMessageBox::InitWindow()
{
    InitFrame();
    CControlUI* const text = m_pm.FindControl(L"lab_text");
    if (text && !m_strText.empty()) {
        text->SetText(ProcessSpecialText(m_strText).c_str());
        text->SetToolTip(m_strText.c_str());
    }
    InitButtons(kFaces);
    // Published: a text of the caller's is red whatever the type.
    if (!m_strOkText.empty())
        SetTextColour(m_pm.FindControl(L"btn_ok"), kRed);
}

std::wstring UIIMessageBox::ProcessSpecialText(std::wstring text)
{
    const int limit = Scaled(kLineWidth);
    std::wstring prefix;
    for (const wchar_t character : text) {
        prefix += character;
        if (GetFontWidth(prefix) >= limit)
            break;
    }
    const std::size_t measured = prefix.size();
    if (measured == text.size())
        return text;

    // Published: one break only, and the first character that was not measured is the first place
    // to look for a space.
    if (text[measured - 1] == L' ')
        return text.insert(measured, 1, kBreak);
    const std::size_t space = text.rfind(L' ', measured);
    return space == std::wstring::npos ? text : text.insert(space + 1, 1, kBreak);
}

int UIIMessageBox::GetFontWidth(std::wstring text)
{
    const auto* const label = FindSkinControl<CLabelUI>(m_pm, L"lab_text");
    const int font = label ? label->GetFont() : 0;
    return TextMeasure(m_pm.GetPaintDC(), m_pm.GetFont(font)).WidthOf(text);
}

} // namespace DuiLib

#include "quillet/dialogs/MessageBox.h"

#include <utility>

#include "quillet/dialogs/MessageBoxFaces.h"
#include "quillet/dialogs/SkinControl.h"

namespace DuiLib {

using namespace Quillet::Dialogs;

namespace {

constexpr DWORD kBlue = 0xFF0000FF;
constexpr DWORD kRed = 0xFFFF0000;
constexpr DWORD kBlack = 0xFF000000;
constexpr DWORD kAzure = 0xFF007DFF;

constexpr const wchar_t* kOk = L"确定";
constexpr const wchar_t* kCancel = L"取消";

constexpr ButtonFaces kByType[] = {
    {{kBlue, kOk}, {kBlue, kCancel}},
    {{kRed, L"删除"}, {kBlue, kCancel}},
    {{kRed, L"关闭"}, {kBlue, kCancel}},
    {{kBlue, kOk}, {kBlue, kCancel}},
    {{kRed, L"清空"}, {kAzure, kCancel}},
    // Published: the button named for OK is the one that cancels.
    {{kBlack, kCancel}, {kAzure, L"立即开始"}},
};

const MessageBoxFaces kFaces{
    .resolve = [](const wchar_t* text) { return std::wstring(text); },
    .onlyButton = kOk,
    .byType = kByType,
};

} // namespace

unsigned int UIMessageBox::PopMessageBox(HWND hParent, std::wstring strCaption,
                                         std::wstring strText, std::wstring strOkText,
                                         std::wstring strCancelText, unsigned int nType,
                                         bool* pbChecked, bool bShowCaption, bool bModal,
                                         bool bForceModal)
{
    auto* const box =
        new UIMessageBox(hParent, std::move(strCaption), std::move(strText), std::move(strOkText),
                         std::move(strCancelText), nType, pbChecked, bShowCaption, bModal);
    return bForceModal || bModal ? RunModal(box, hParent) : RunModeless(box, hParent);
}

UIMessageBox::UIMessageBox(HWND hParent, std::wstring strCaption, std::wstring strText,
                           std::wstring strOkText, std::wstring strCancelText, unsigned int nType,
                           bool* pbChecked, bool bShowCaption, bool bModal)
    : MessageBoxWindow(L"MessageBox.xml", hParent, std::move(strCaption), std::move(strText),
                       std::move(strOkText), std::move(strCancelText), nType, pbChecked,
                       bShowCaption, bModal)
{
}

UIMessageBox::~UIMessageBox() = default;

LPCTSTR UIMessageBox::GetWindowClassName() const
{
    return L"UIMessageBox";
}

void UIMessageBox::InitWindow()
{
    InitFrame();
    SetTextUnlessEmpty(m_pm.FindControl(L"lab_text"), m_strText);
    InitButtons(kFaces);
}

void UIMessageBox::OnFinalMessage(HWND hWnd)
{
    MessageBoxWindow::OnFinalMessage(hWnd);
    delete this;
}

} // namespace DuiLib

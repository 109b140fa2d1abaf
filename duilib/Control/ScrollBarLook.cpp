#include "Control/UIScrollBar.h"

#include "win32/AttributeTable.h"

// The pictures of a scroll bar and its attributes.
namespace DuiLib {

using namespace Quillet::Text;
using Quillet::AttributeKind;
using Quillet::MakeAttributeTable;
using Quillet::NameMatch;

void CScrollBarUI::SetImage(CDuiString& member, LPCTSTR image)
{
    if (member == image)
        return;
    member = image;
    Invalidate();
}

LPCTSTR CScrollBarUI::GetButton1NormalImage()
{
    return m_sButton1NormalImage;
}

void CScrollBarUI::SetButton1NormalImage(LPCTSTR image)
{
    SetImage(m_sButton1NormalImage, image);
}

LPCTSTR CScrollBarUI::GetButton1HotImage()
{
    return m_sButton1HotImage;
}

void CScrollBarUI::SetButton1HotImage(LPCTSTR image)
{
    SetImage(m_sButton1HotImage, image);
}

LPCTSTR CScrollBarUI::GetButton1PushedImage()
{
    return m_sButton1PushedImage;
}

void CScrollBarUI::SetButton1PushedImage(LPCTSTR image)
{
    SetImage(m_sButton1PushedImage, image);
}

LPCTSTR CScrollBarUI::GetButton1DisabledImage()
{
    return m_sButton1DisabledImage;
}

void CScrollBarUI::SetButton1DisabledImage(LPCTSTR image)
{
    SetImage(m_sButton1DisabledImage, image);
}

LPCTSTR CScrollBarUI::GetButton2NormalImage()
{
    return m_sButton2NormalImage;
}

void CScrollBarUI::SetButton2NormalImage(LPCTSTR image)
{
    SetImage(m_sButton2NormalImage, image);
}

LPCTSTR CScrollBarUI::GetButton2HotImage()
{
    return m_sButton2HotImage;
}

void CScrollBarUI::SetButton2HotImage(LPCTSTR image)
{
    SetImage(m_sButton2HotImage, image);
}

LPCTSTR CScrollBarUI::GetButton2PushedImage()
{
    return m_sButton2PushedImage;
}

void CScrollBarUI::SetButton2PushedImage(LPCTSTR image)
{
    SetImage(m_sButton2PushedImage, image);
}

LPCTSTR CScrollBarUI::GetButton2DisabledImage()
{
    return m_sButton2DisabledImage;
}

void CScrollBarUI::SetButton2DisabledImage(LPCTSTR image)
{
    SetImage(m_sButton2DisabledImage, image);
}

LPCTSTR CScrollBarUI::GetThumbNormalImage()
{
    return m_sThumbNormalImage;
}

void CScrollBarUI::SetThumbNormalImage(LPCTSTR image)
{
    SetImage(m_sThumbNormalImage, image);
}

LPCTSTR CScrollBarUI::GetThumbHotImage()
{
    return m_sThumbHotImage;
}

void CScrollBarUI::SetThumbHotImage(LPCTSTR image)
{
    SetImage(m_sThumbHotImage, image);
}

LPCTSTR CScrollBarUI::GetThumbPushedImage()
{
    return m_sThumbPushedImage;
}

void CScrollBarUI::SetThumbPushedImage(LPCTSTR image)
{
    SetImage(m_sThumbPushedImage, image);
}

LPCTSTR CScrollBarUI::GetThumbDisabledImage()
{
    return m_sThumbDisabledImage;
}

void CScrollBarUI::SetThumbDisabledImage(LPCTSTR image)
{
    SetImage(m_sThumbDisabledImage, image);
}

LPCTSTR CScrollBarUI::GetRailNormalImage()
{
    return m_sRailNormalImage;
}

void CScrollBarUI::SetRailNormalImage(LPCTSTR image)
{
    SetImage(m_sRailNormalImage, image);
}

LPCTSTR CScrollBarUI::GetRailHotImage()
{
    return m_sRailHotImage;
}

void CScrollBarUI::SetRailHotImage(LPCTSTR image)
{
    SetImage(m_sRailHotImage, image);
}

LPCTSTR CScrollBarUI::GetRailPushedImage()
{
    return m_sRailPushedImage;
}

void CScrollBarUI::SetRailPushedImage(LPCTSTR image)
{
    SetImage(m_sRailPushedImage, image);
}

LPCTSTR CScrollBarUI::GetRailDisabledImage()
{
    return m_sRailDisabledImage;
}

void CScrollBarUI::SetRailDisabledImage(LPCTSTR image)
{
    SetImage(m_sRailDisabledImage, image);
}

LPCTSTR CScrollBarUI::GetBkNormalImage()
{
    return m_sBkNormalImage;
}

void CScrollBarUI::SetBkNormalImage(LPCTSTR image)
{
    SetImage(m_sBkNormalImage, image);
}

LPCTSTR CScrollBarUI::GetBkHotImage()
{
    return m_sBkHotImage;
}

void CScrollBarUI::SetBkHotImage(LPCTSTR image)
{
    SetImage(m_sBkHotImage, image);
}

LPCTSTR CScrollBarUI::GetBkPushedImage()
{
    return m_sBkPushedImage;
}

void CScrollBarUI::SetBkPushedImage(LPCTSTR image)
{
    SetImage(m_sBkPushedImage, image);
}

LPCTSTR CScrollBarUI::GetBkDisabledImage()
{
    return m_sBkDisabledImage;
}

void CScrollBarUI::SetBkDisabledImage(LPCTSTR image)
{
    SetImage(m_sBkDisabledImage, image);
}

void CScrollBarUI::SetAttribute(LPCTSTR name, LPCTSTR value)
{
    using Self = CScrollBarUI;
    static constexpr auto kTable = MakeAttributeTable<NameMatch::NoCase, Self>({
        {L"button1normalimage", AttributeKind::Image,
         [](Self& self, LPCTSTR v) { self.SetButton1NormalImage(v); }},
        {L"button1hotimage", AttributeKind::Image,
         [](Self& self, LPCTSTR v) { self.SetButton1HotImage(v); }},
        {L"button1pushedimage", AttributeKind::Image,
         [](Self& self, LPCTSTR v) { self.SetButton1PushedImage(v); }},
        {L"button1disabledimage", AttributeKind::Image,
         [](Self& self, LPCTSTR v) { self.SetButton1DisabledImage(v); }},
        {L"button2normalimage", AttributeKind::Image,
         [](Self& self, LPCTSTR v) { self.SetButton2NormalImage(v); }},
        {L"button2hotimage", AttributeKind::Image,
         [](Self& self, LPCTSTR v) { self.SetButton2HotImage(v); }},
        {L"button2pushedimage", AttributeKind::Image,
         [](Self& self, LPCTSTR v) { self.SetButton2PushedImage(v); }},
        {L"button2disabledimage", AttributeKind::Image,
         [](Self& self, LPCTSTR v) { self.SetButton2DisabledImage(v); }},
        {L"thumbnormalimage", AttributeKind::Image,
         [](Self& self, LPCTSTR v) { self.SetThumbNormalImage(v); }},
        {L"thumbhotimage", AttributeKind::Image,
         [](Self& self, LPCTSTR v) { self.SetThumbHotImage(v); }},
        {L"thumbpushedimage", AttributeKind::Image,
         [](Self& self, LPCTSTR v) { self.SetThumbPushedImage(v); }},
        {L"thumbdisabledimage", AttributeKind::Image,
         [](Self& self, LPCTSTR v) { self.SetThumbDisabledImage(v); }},
        {L"railnormalimage", AttributeKind::Image,
         [](Self& self, LPCTSTR v) { self.SetRailNormalImage(v); }},
        {L"railhotimage", AttributeKind::Image,
         [](Self& self, LPCTSTR v) { self.SetRailHotImage(v); }},
        {L"railpushedimage", AttributeKind::Image,
         [](Self& self, LPCTSTR v) { self.SetRailPushedImage(v); }},
        {L"raildisabledimage", AttributeKind::Image,
         [](Self& self, LPCTSTR v) { self.SetRailDisabledImage(v); }},
        {L"bknormalimage", AttributeKind::Image,
         [](Self& self, LPCTSTR v) { self.SetBkNormalImage(v); }},
        {L"bkhotimage", AttributeKind::Image, [](Self& self, LPCTSTR v) { self.SetBkHotImage(v); }},
        {L"bkpushedimage", AttributeKind::Image,
         [](Self& self, LPCTSTR v) { self.SetBkPushedImage(v); }},
        {L"bkdisabledimage", AttributeKind::Image,
         [](Self& self, LPCTSTR v) { self.SetBkDisabledImage(v); }},
        {L"hor", AttributeKind::Boolean,
         [](Self& self, LPCTSTR v) { self.SetHorizontal(IsTrue(v)); }},
        {L"linesize", AttributeKind::Number,
         [](Self& self, LPCTSTR v) { self.SetLineSize(ToInt(v)); }},
        {L"range", AttributeKind::Number,
         [](Self& self, LPCTSTR v) { self.SetScrollRange(ToInt(v)); }},
        {L"value", AttributeKind::Number,
         [](Self& self, LPCTSTR v) { self.SetScrollPos(ToInt(v)); }},
        {L"showbutton1", AttributeKind::Boolean,
         [](Self& self, LPCTSTR v) { self.SetShowButton1(IsTrue(v)); }},
        {L"showbutton2", AttributeKind::Boolean,
         [](Self& self, LPCTSTR v) { self.SetShowButton2(IsTrue(v)); }},
    });
    if (!kTable.Apply(*this, name, value))
        CControlUI::SetAttribute(name, value);
}

} // namespace DuiLib

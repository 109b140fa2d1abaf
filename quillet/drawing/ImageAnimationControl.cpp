#include "quillet/drawing/ImageAnimationControl.h"

#include "win32/AttributeTable.h"
#include "win32/TextParse.h"

namespace DuiLib {

using Quillet::AttributeKind;
using Quillet::MakeAttributeTable;
using Quillet::NameMatch;

CImageAnimationControlUI::CImageAnimationControlUI()
    : m_pPainter(std::make_unique<ImageAnimationPainter>(this))
{
}

CImageAnimationControlUI::CImageAnimationControlUI(ImageAnimationPainter* painter)
    : m_pPainter(painter)
{
}

CImageAnimationControlUI::~CImageAnimationControlUI() = default;

void CImageAnimationControlUI::SetBitmaps(const std::vector<HBITMAP>& bitmaps)
{
    m_pPainter->SetBitmaps(bitmaps);
}

void CImageAnimationControlUI::SetFileRes(const std::vector<std::wstring>& names, bool preload,
                                          bool backgroundLoading, bool parseAsAttribute)
{
    m_pPainter->SetFileRes(names, preload, backgroundLoading, parseAsAttribute);
}

void CImageAnimationControlUI::SetDuring(unsigned ms)
{
    m_pPainter->SetDuring(static_cast<int>(ms));
}

void CImageAnimationControlUI::SetPrecision(unsigned ms)
{
    m_pPainter->SetPrecision(static_cast<int>(ms));
}

void CImageAnimationControlUI::SetPadding(unsigned left, unsigned top, unsigned right,
                                          unsigned bottom)
{
    m_pPainter->SetPadding(static_cast<int>(left), static_cast<int>(top), static_cast<int>(right),
                           static_cast<int>(bottom));
}

void CImageAnimationControlUI::SetMaxRound(unsigned n)
{
    m_pPainter->SetMaxRound(static_cast<int>(n));
}

void CImageAnimationControlUI::SetAnimationBackgroundColor(DWORD argb)
{
    m_pPainter->SetAnimationBackgroundColor(argb);
}

void CImageAnimationControlUI::Start()
{
    m_pPainter->Start();
}

void CImageAnimationControlUI::Stop()
{
    m_pPainter->Stop();
}

bool CImageAnimationControlUI::IsAnimating()
{
    return m_pPainter->IsAnimating();
}

void CImageAnimationControlUI::CloneStateFrom(CImageAnimationControlUI* other)
{
    if (other)
        m_pPainter->CloneStateFrom(other->GetPainter());
}

ImageAnimationPainter* CImageAnimationControlUI::GetPainter()
{
    return m_pPainter.get();
}

bool CImageAnimationControlUI::DoPaint(HDC hdc, const RECT& paint, CControlUI* /*stop*/)
{
    DoPaint(hdc, paint);
    return true;
}

void CImageAnimationControlUI::DoPaint(HDC hdc, const RECT& /*paint*/)
{
    m_pPainter->Paint(hdc);
}

void CImageAnimationControlUI::SetAttribute(LPCTSTR name, LPCTSTR value)
{
    using Self = CImageAnimationControlUI;
    static constexpr auto kTable = MakeAttributeTable<NameMatch::NoCase, Self>({
        // Published: any other value leaves the binding as it is.
        {L"bindwithvisible", AttributeKind::Boolean,
         [](Self& self, LPCTSTR text) {
             if (Quillet::Text::View(text) == L"true")
                 self.m_bBoundToVisibility = true;
         }},
    });
    kTable.Apply(*this, name, value);
    // Published: the control gets every attribute, also the one taken here.
    CControlUI::SetAttribute(name, value);
}

void CImageAnimationControlUI::SetVisible(bool visible)
{
    if (m_bBoundToVisibility) {
        if (visible)
            Start();
        else
            Stop();
    }
    CControlUI::SetVisible(visible);
}

} // namespace DuiLib

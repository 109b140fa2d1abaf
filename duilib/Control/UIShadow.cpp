#include "Control/UIShadow.h"

namespace DuiLib {

namespace {

constexpr int kLargestSize = 20;
constexpr unsigned int kLargestSharpness = 20;
constexpr unsigned int kLargestDarkness = 255;
constexpr int kFarthestPosition = 100;
constexpr COLORREF kLargestColor = 0x00FFFFFF;

bool IsWithin(int value, int largest)
{
    return value >= -largest && value <= largest;
}

} // namespace

CShadowUI::CShadowUI()
    : m_pManager(nullptr),
      m_bIsShowShadow(false),
      m_bIsDisableShadow(false),
      m_nSize(0),
      m_nSharpness(5),
      m_nDarkness(200),
      m_ptPosition{5, 5},
      m_Color(0),
      m_rcShadowCorner{}
{
}

void CShadowUI::Create(CPaintManagerUI* manager)
{
    m_pManager = manager;
}

void CShadowUI::ShowShadow(bool show)
{
    m_bIsShowShadow = show;
}

bool CShadowUI::IsShowShadow() const
{
    return m_bIsShowShadow;
}

void CShadowUI::DisableShadow(bool disable)
{
    m_bIsDisableShadow = disable;
}

bool CShadowUI::IsDisableShadow() const
{
    return m_bIsDisableShadow;
}

bool CShadowUI::SetSize(int size)
{
    if (!IsWithin(size, kLargestSize))
        return false;
    m_nSize = size;
    return true;
}

bool CShadowUI::SetSharpness(unsigned int sharpness)
{
    if (sharpness > kLargestSharpness)
        return false;
    m_nSharpness = sharpness;
    return true;
}

bool CShadowUI::SetDarkness(unsigned int darkness)
{
    if (darkness > kLargestDarkness)
        return false;
    m_nDarkness = darkness;
    return true;
}

bool CShadowUI::SetPosition(int x, int y)
{
    if (!IsWithin(x, kFarthestPosition) || !IsWithin(y, kFarthestPosition))
        return false;
    m_ptPosition = {x, y};
    return true;
}

bool CShadowUI::SetColor(COLORREF color)
{
    if (color > kLargestColor)
        return false;
    m_Color = color;
    return true;
}

bool CShadowUI::SetImage(LPCTSTR image)
{
    m_sShadowImage = image;
    return !m_sShadowImage.IsEmpty();
}

bool CShadowUI::SetShadowCorner(RECT corner)
{
    if (corner.left < 0 || corner.top < 0 || corner.right < 0 || corner.bottom < 0)
        return false;
    m_rcShadowCorner = corner;
    return true;
}

bool CShadowUI::CopyShadow(CShadowUI* shadow)
{
    if (shadow == nullptr)
        return false;
    CPaintManagerUI* const manager = m_pManager;
    *this = *shadow;
    m_pManager = manager;
    return true;
}

int CShadowUI::GetSize() const
{
    return m_nSize;
}

unsigned int CShadowUI::GetSharpness() const
{
    return m_nSharpness;
}

unsigned int CShadowUI::GetDarkness() const
{
    return m_nDarkness;
}

POINT CShadowUI::GetPosition() const
{
    return m_ptPosition;
}

COLORREF CShadowUI::GetColor() const
{
    return m_Color;
}

LPCTSTR CShadowUI::GetImage() const
{
    return m_sShadowImage;
}

RECT CShadowUI::GetShadowCorner() const
{
    return m_rcShadowCorner;
}

CPaintManagerUI* CShadowUI::GetManager() const
{
    return m_pManager;
}

} // namespace DuiLib

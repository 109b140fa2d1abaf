#include "Utils/Utils.h"

#include <utility>

namespace DuiLib {

CDuiPoint::CDuiPoint() : CDuiPoint(0, 0) {}

CDuiPoint::CDuiPoint(const POINT& point) : CDuiPoint(point.x, point.y) {}

CDuiPoint::CDuiPoint(int pointX, int pointY)
{
    x = pointX;
    y = pointY;
}

CDuiPoint::CDuiPoint(LPARAM coordinates)
    : CDuiPoint(GET_X_LPARAM(coordinates), GET_Y_LPARAM(coordinates))
{
}

CDuiSize::CDuiSize() : CDuiSize(0, 0) {}

CDuiSize::CDuiSize(const SIZE& size) : CDuiSize(size.cx, size.cy) {}

CDuiSize::CDuiSize(const RECT rect) : CDuiSize(rect.right - rect.left, rect.bottom - rect.top) {}

CDuiSize::CDuiSize(int width, int height)
{
    cx = width;
    cy = height;
}

CDuiRect::CDuiRect()
{
    Empty();
}

CDuiRect::CDuiRect(const RECT& rect) : CDuiRect(rect.left, rect.top, rect.right, rect.bottom) {}

CDuiRect::CDuiRect(int leftEdge, int topEdge, int rightEdge, int bottomEdge)
{
    left = leftEdge;
    top = topEdge;
    right = rightEdge;
    bottom = bottomEdge;
}

int CDuiRect::GetWidth() const
{
    return right - left;
}

int CDuiRect::GetHeight() const
{
    return bottom - top;
}

void CDuiRect::Empty()
{
    left = top = right = bottom = 0;
}

bool CDuiRect::IsNull() const
{
    return left == 0 && top == 0 && right == 0 && bottom == 0;
}

void CDuiRect::Join(const RECT& rect)
{
    left = (std::min)(left, rect.left);
    top = (std::min)(top, rect.top);
    right = (std::max)(right, rect.right);
    bottom = (std::max)(bottom, rect.bottom);
}

void CDuiRect::ResetOffset()
{
    ::OffsetRect(this, -left, -top);
}

void CDuiRect::Normalize()
{
    if (left > right)
        std::swap(left, right);
    if (top > bottom)
        std::swap(top, bottom);
}

void CDuiRect::Offset(int byX, int byY)
{
    ::OffsetRect(this, byX, byY);
}

void CDuiRect::Inflate(int byX, int byY)
{
    ::InflateRect(this, byX, byY);
}

void CDuiRect::Deflate(int byX, int byY)
{
    ::InflateRect(this, -byX, -byY);
}

void CDuiRect::Union(CDuiRect& rect)
{
    const RECT own = *this;
    ::UnionRect(this, &own, &rect);
}

CWaitCursor::CWaitCursor() : m_hOrigCursor(::SetCursor(::LoadCursor(nullptr, IDC_WAIT))) {}

CWaitCursor::~CWaitCursor()
{
    ::SetCursor(m_hOrigCursor);
}

CDuiVariant::CDuiVariant()
{
    ::VariantInit(this);
}

CDuiVariant::CDuiVariant(int i) : CDuiVariant()
{
    vt = VT_I4;
    intVal = i;
}

CDuiVariant::CDuiVariant(float f) : CDuiVariant()
{
    vt = VT_R4;
    fltVal = f;
}

CDuiVariant::CDuiVariant(LPOLESTR s) : CDuiVariant()
{
    vt = VT_BSTR;
    bstrVal = ::SysAllocString(s);
}

CDuiVariant::CDuiVariant(IDispatch* disp) : CDuiVariant()
{
    vt = VT_DISPATCH;
    pdispVal = disp;
    if (disp != nullptr)
        disp->AddRef();
}

CDuiVariant::CDuiVariant(const CDuiVariant& other) : CDuiVariant()
{
    *this = other;
}

CDuiVariant& CDuiVariant::operator=(const CDuiVariant& other)
{
    if (this != &other)
        ::VariantCopy(this, const_cast<CDuiVariant*>(&other));
    return *this;
}

CDuiVariant::~CDuiVariant()
{
    ::VariantClear(this);
}

} // namespace DuiLib

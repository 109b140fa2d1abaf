#include "quillet/frame/QuilletGlobal.h"

namespace DuiLib {

QuilletGlobal& QuilletGlobal::GetInstatnce()
{
    static QuilletGlobal global;
    return global;
}

DWORD QuilletGlobal::GetMainThreadId()
{
    return m_dwMainThreadId;
}

void QuilletGlobal::SetMainThreadId(DWORD id)
{
    m_dwMainThreadId = id;
}

} // namespace DuiLib

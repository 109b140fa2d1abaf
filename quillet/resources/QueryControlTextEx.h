#pragma once

#include <UIlib.h>

#include "quillet/Export.h"

namespace DuiLib {

// The application's answer to texts that no language file holds; see
// CResourceManagerEx::SetTextQueryInterface. The managers never own it.
class QUILLET_API IQueryControlTextEx {
public:
    IQueryControlTextEx();
    IQueryControlTextEx(const IQueryControlTextEx&);
    IQueryControlTextEx(IQueryControlTextEx&&) noexcept;
    IQueryControlTextEx& operator=(const IQueryControlTextEx&);
    IQueryControlTextEx& operator=(IQueryControlTextEx&&) noexcept;

    // The text of an id, or null. `type` is what the asker passed on, null when texts are reloaded.
    virtual const wchar_t* QueryControlText(const wchar_t* id, const wchar_t* type) = 0;

protected:
    ~IQueryControlTextEx() = default;
};

} // namespace DuiLib

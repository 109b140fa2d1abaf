#pragma once

#include "win32/Windows.h"

#include <unknwn.h>

#include <memory>

namespace Quillet {

struct ReleaseInterface {
    void operator()(IUnknown* object) const noexcept { object->Release(); }
};

// Owns one reference.
template <class Interface>
using ComPointer = std::unique_ptr<Interface, ReleaseInterface>;

// A second reference to what somebody else owns; null stays null.
template <class Interface>
ComPointer<Interface> ShareInterface(Interface* object)
{
    if (object != nullptr)
        object->AddRef();
    return ComPointer<Interface>(object);
}

} // namespace Quillet

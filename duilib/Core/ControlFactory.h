#pragma once

#include "Core/UIExport.h"
#include "Core/UIPlatform.h"

#include "Utils/Utils.h"

#include <memory>
#include <string_view>

namespace DuiLib {

class CControlUI;

typedef CControlUI* (*CreateClass)();

// Makes controls by class name, such as "CButtonUI", in any case.
//
// The toolkit's own classes are known from the start; registering a name again replaces its class.
class UILIB_API CControlFactory {
public:
    CControlUI* CreateControl(CDuiString className); // the caller's; null for an unknown name
    void RegistControl(CDuiString className, CreateClass create);

    static CControlFactory* GetInstance();
    void Release(); // forgets all; the next GetInstance starts anew

private:
    friend class CDialogBuilder;
    struct Classes;

    CControlFactory();
    ~CControlFactory();
    CControlFactory(const CControlFactory&) = delete;
    CControlFactory& operator=(const CControlFactory&) = delete;

    // The class "C" + name + "UI", without building that text.
    CControlUI* CreateByXmlName(std::wstring_view name);

    std::unique_ptr<Classes> m_pClasses;
};

} // namespace DuiLib

// In the class, in its source, and before the first skin that names it.
#define DECLARE_DUICONTROL(class_name)                                                             \
public:                                                                                            \
    static DuiLib::CControlUI* CreateControl();

#define IMPLEMENT_DUICONTROL(class_name)                                                           \
    DuiLib::CControlUI* class_name::CreateControl()                                                \
    {                                                                                              \
        return new class_name;                                                                     \
    }

#define REGIST_DUICONTROL(class_name)                                                              \
    DuiLib::CControlFactory::GetInstance()->RegistControl(_T(#class_name),                         \
                                                          &class_name::CreateControl);

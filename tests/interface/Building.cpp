#include "interface/Declarations.h"

using namespace DuiLib;
using namespace interface_test;

namespace {

std::vector<Declaration> CDialogBuilderOperations()
{
    return {
        OPERATION(CDialogBuilder, CDialogBuilder, Create,
                  CControlUI * (STRINGorID, LPCTSTR, IDialogBuilderCallback*, CPaintManagerUI*,
                                CControlUI*)),
        OPERATION(CDialogBuilder, CDialogBuilder, Create,
                  CControlUI * (IDialogBuilderCallback*, CPaintManagerUI*, CControlUI*)),
        OPERATION(CDialogBuilder, CDialogBuilder, GetMarkup, CMarkup * ()),
        OPERATION(CDialogBuilder, CDialogBuilder, GetLastErrorMessage, void(LPTSTR, SIZE_T) const),
        OPERATION(CDialogBuilder, CDialogBuilder, GetLastErrorLocation, void(LPTSTR, SIZE_T) const),
        OPERATION(CDialogBuilder, CDialogBuilder, SetInstance, void(HINSTANCE)),
    };
}

std::vector<Declaration> CControlFactoryOperations()
{
    return {
        OPERATION(CControlFactory, CControlFactory, CreateControl, CControlUI * (CDuiString)),
        OPERATION(CControlFactory, CControlFactory, RegistControl, void(CDuiString, CreateClass)),
        FUNCTION(CControlFactory, CControlFactory, GetInstance, CControlFactory * ()),
        OPERATION(CControlFactory, CControlFactory, Release, void()),
    };
}

std::vector<Declaration> CMarkupOperations()
{
    return {
        OPERATION(CMarkup, CMarkup, Load, bool(LPCTSTR)),
        OPERATION(CMarkup, CMarkup, LoadFromMem, bool(BYTE*, DWORD, int)),
        OPERATION(CMarkup, CMarkup, LoadFromFile, bool(LPCTSTR, int)),
        OPERATION(CMarkup, CMarkup, Release, void()),
        OPERATION(CMarkup, CMarkup, IsValid, bool() const),
        OPERATION(CMarkup, CMarkup, SetPreserveWhitespace, void(bool)),
        OPERATION(CMarkup, CMarkup, GetLastErrorMessage, void(LPTSTR, SIZE_T) const),
        OPERATION(CMarkup, CMarkup, GetLastErrorLocation, void(LPTSTR, SIZE_T) const),
        OPERATION(CMarkup, CMarkup, GetRoot, CMarkupNode()),
    };
}

std::vector<Declaration> CMarkupNodeOperations()
{
    return {
        OPERATION(CMarkupNode, CMarkupNode, GetParent, CMarkupNode()),
        OPERATION(CMarkupNode, CMarkupNode, GetSibling, CMarkupNode()),
        OPERATION(CMarkupNode, CMarkupNode, GetChild, CMarkupNode()),
        OPERATION(CMarkupNode, CMarkupNode, GetChild, CMarkupNode(LPCTSTR)),
        OPERATION(CMarkupNode, CMarkupNode, HasSiblings, bool() const),
        OPERATION(CMarkupNode, CMarkupNode, HasChildren, bool() const),
        OPERATION(CMarkupNode, CMarkupNode, GetName, LPCTSTR() const),
        OPERATION(CMarkupNode, CMarkupNode, GetValue, LPCTSTR() const),
        OPERATION(CMarkupNode, CMarkupNode, HasAttributes, bool()),
        OPERATION(CMarkupNode, CMarkupNode, HasAttribute, bool(LPCTSTR)),
        OPERATION(CMarkupNode, CMarkupNode, GetAttributeCount, int()),
        OPERATION(CMarkupNode, CMarkupNode, GetAttributeName, LPCTSTR(int)),
        OPERATION(CMarkupNode, CMarkupNode, GetAttributeValue, LPCTSTR(int)),
        OPERATION(CMarkupNode, CMarkupNode, GetAttributeValue, LPCTSTR(LPCTSTR)),
        OPERATION(CMarkupNode, CMarkupNode, GetAttributeValue, bool(int, LPTSTR, SIZE_T)),
        OPERATION(CMarkupNode, CMarkupNode, GetAttributeValue, bool(LPCTSTR, LPTSTR, SIZE_T)),
        OPERATION(CMarkupNode, CMarkupNode, IsValid, bool() const),
    };
}

// What may be left out of a call.
static_assert(requires(CDialogBuilder & it, STRINGorID a0) { it.Create(a0); });
static_assert(requires(CDialogBuilder & it, STRINGorID a0, LPCTSTR a1) { it.Create(a0, a1); });
static_assert(requires(CDialogBuilder & it, STRINGorID a0, LPCTSTR a1, IDialogBuilderCallback* a2) {
    it.Create(a0, a1, a2);
});
static_assert(requires(CDialogBuilder & it, STRINGorID a0, LPCTSTR a1, IDialogBuilderCallback* a2,
                       CPaintManagerUI* a3) { it.Create(a0, a1, a2, a3); });
static_assert(requires(CDialogBuilder & it) { it.Create(); });
static_assert(requires(CDialogBuilder & it, IDialogBuilderCallback* a0) { it.Create(a0); });
static_assert(requires(CDialogBuilder & it, IDialogBuilderCallback* a0, CPaintManagerUI* a1) {
    it.Create(a0, a1);
});
static_assert(requires(CMarkup & it, BYTE* a0, DWORD a1) { it.LoadFromMem(a0, a1); });
static_assert(requires(CMarkup & it, LPCTSTR a0) { it.LoadFromFile(a0); });
static_assert(requires(CMarkup & it) { it.SetPreserveWhitespace(); });

} // namespace

namespace interface_test {

std::vector<Declaration> Building()
{
    return Join({CDialogBuilderOperations(), CControlFactoryOperations(), CMarkupOperations(),
                 CMarkupNodeOperations()});
}

} // namespace interface_test

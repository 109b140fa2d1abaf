#pragma once

#include "Core/UIExport.h"
#include "Core/UIPlatform.h"

#include "Core/UIInterfaces.h"
#include "Core/UIMarkup.h"
#include "Utils/Utils.h"

#include <string>

namespace DuiLib {

class CControlUI;
class CPaintManagerUI;

// Builds controls from the XML text of a skin.
//
// A skin that cannot be read, or that nests more than 256 levels of controls or includes itself,
// gives null. An element that nobody can create is left out with its children. All of it leaves a
// line with file, line, column and reason in CPaintManagerUI::GetLastErrorText.
class UILIB_API CDialogBuilder {
public:
    CDialogBuilder();

    // Loads and builds. A text that starts with '<' is the skin itself; any other is an id of
    // CResourceManager or the name of a file; a number is a resource of the given type in the
    // builder's or the resource module.
    //
    // The first top-level control is the result, and the caller's; further ones are deleted. With a
    // parent, every top-level control is added to that parent, which owns it.
    CControlUI* Create(STRINGorID source, LPCTSTR type = NULL,
                       IDialogBuilderCallback* callback = NULL, CPaintManagerUI* manager = NULL,
                       CControlUI* parent = NULL);

    // Builds once more from what is loaded already.
    CControlUI* Create(IDialogBuilderCallback* callback = NULL, CPaintManagerUI* manager = NULL,
                       CControlUI* parent = NULL);

    CMarkup* GetMarkup();
    void GetLastErrorMessage(LPTSTR buffer, SIZE_T size) const;
    void GetLastErrorLocation(LPTSTR buffer, SIZE_T size) const;
    void SetInstance(HINSTANCE instance); // of the resource form

private:
    struct Build;

    static bool LoadMarkup(CMarkup& markup, STRINGorID source, LPCTSTR type, HINSTANCE module);
    static void ReadHead(Build& build, CMarkupNode root);
    static void BuildChildren(Build& build, CMarkupNode parentNode, CControlUI* parent, UINT depth,
                              CControlUI** first);
    static void BuildIncluded(Build& build, CMarkupNode node, CControlUI* parent, UINT depth,
                              CControlUI** first);
    static CControlUI* BuildControl(Build& build, CMarkupNode node, UINT depth);
    static CControlUI* NewControl(Build& build, LPCTSTR name);
    static void SetAttributes(Build& build, CMarkupNode node, CControlUI& control,
                              CControlUI* parent);
    static void Report(CMarkupNode node, const std::wstring& what);
    static void Refuse(Build& build, CMarkupNode node, const std::wstring& what);

    CMarkup m_xml;
    CDuiString m_sSource;  // what was loaded
    CDuiString m_sResType; // includes come from the same resource type
    CDuiString m_sError;   // why the last build was refused
    CDuiString m_sErrorPlace;
    HINSTANCE m_instance;
};

} // namespace DuiLib

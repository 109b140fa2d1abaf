#pragma once

#include "Core/UIExport.h"
#include "Core/UIPlatform.h"

#include "Core/UIInterfaces.h"
#include "Core/UIMarkup.h"
#include "Utils/Utils.h"

#include <memory>

namespace DuiLib {

// The application's texts by id, and the paths of its pictures and skins by id. One per process.
//
// Ids are compared exactly. Look-ups of paths are safe from any thread; the rest belongs to the
// thread of the windows.
class UILIB_API CResourceManager {
public:
    static CResourceManager* GetInstance();
    void Release(); // deletes the object; the next GetInstance makes an empty one

    // Adds the paths of an index document: its leaf elements Image and Xml, with id and path, at
    // any depth. A text that starts with '<' is the document, any other names a file, a number is a
    // resource of the given type.
    BOOL LoadResource(STRINGorID source, LPCTSTR type = NULL);
    BOOL LoadResource(CMarkupNode root);
    void ResetResourceMap();

    // Null for an unknown id. The text lives until its id is loaded again or the map is reset.
    LPCTSTR GetImagePath(LPCTSTR id);
    LPCTSTR GetXmlPath(LPCTSTR id);

    void SetLanguage(LPCTSTR language);
    LPCTSTR GetLanguage(); // never null

    // Adds the texts of a document, or of a file with one: elements Text with id and value.
    BOOL LoadLanguage(LPCTSTR source);

    // Asked, with id and type, for texts that no document holds. Not owned.
    void SetTextQueryInterface(IQueryControlText* query);

    // The loaded text, else the answer of the query interface, which is remembered, else the id.
    CDuiString GetText(LPCTSTR id, LPCTSTR type = NULL);

    // Asks the query interface for every known id again.
    void ReloadText();
    void ResetTextMap();

private:
    struct Tables;

    CResourceManager();
    ~CResourceManager();
    CResourceManager(const CResourceManager&) = delete;
    CResourceManager& operator=(const CResourceManager&) = delete;

    std::unique_ptr<Tables> m_pTables;
    CDuiString m_sLanguage;
    IQueryControlText* m_pQuery;
};

} // namespace DuiLib

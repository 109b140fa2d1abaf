#pragma once

#include "Core/UIExport.h"
#include "Core/UIPlatform.h"

#include "Core/UIDefine.h"
#include "Utils/Utils.h"

#include <memory>

namespace DuiLib {

class CMarkupNode;
struct MarkupAttribute;
struct MarkupDocument;

// Reads a small dialect of XML: one root element, comments and processing instructions, attribute
// values in double quotes, the five predefined entities.
//
// A copy is shallow: it shares the parsed text, which lives as long as the last copy that holds it.
// Every failed load leaves a readable reason, here and in CPaintManagerUI::GetLastErrorText.
class UILIB_API CMarkup {
    friend class CDialogBuilder;
    friend class CResourceManager;

public:
    CMarkup(LPCTSTR text = NULL);
    ~CMarkup();
    CMarkup(const CMarkup&) = default;
    CMarkup& operator=(const CMarkup&) = default;

    // Parses a copy of the text.
    bool Load(LPCTSTR text);

    // Parses bytes in the given encoding. A byte-order mark decides over the argument.
    bool LoadFromMem(BYTE* bytes, DWORD size, int encoding = XMLFILE_ENCODING_UTF8);

    // Parses a file below the resource path, or an item of the resource archive. Files that are
    // empty or larger than 4 MB fail.
    bool LoadFromFile(LPCTSTR file, int encoding = XMLFILE_ENCODING_UTF8);

    // Lets go of the text. Nodes of it die with the last copy.
    void Release();
    bool IsValid() const;

    // Takes effect at the next load: false drops white space at both ends of an element's text and
    // turns each run inside into one blank. Attribute values always keep theirs.
    void SetPreserveWhitespace(bool preserve = true);

    // Why the last load failed, and where: "file(line,column)". Both are empty after a success. The
    // size is in characters, with the final zero; a longer text is cut.
    void GetLastErrorMessage(LPTSTR buffer, SIZE_T size) const;
    void GetLastErrorLocation(LPTSTR buffer, SIZE_T size) const;

    CMarkupNode GetRoot();

private:
    bool Adopt(std::shared_ptr<MarkupDocument> document);
    bool Fail(LPCTSTR source, LPCTSTR reason);
    bool LoadFromResource(STRINGorID name, LPCTSTR type, HINSTANCE module);
    bool LoadBytes(LPCTSTR source, const BYTE* bytes, SIZE_T size, int encoding);

    std::shared_ptr<MarkupDocument> m_pDocument;
    bool m_bPreserveWhitespace = true;
};

// An element of a parsed text. A small value; the CMarkup it came from must outlive it.
class UILIB_API CMarkupNode {
    friend class CDialogBuilder;
    friend class CMarkup;

public:
    bool IsValid() const;

    CMarkupNode GetParent();
    CMarkupNode GetSibling();
    CMarkupNode GetChild();
    CMarkupNode GetChild(LPCTSTR name); // the first of that name, in any case

    bool HasSiblings() const; // a following one
    bool HasChildren() const; // elements only
    LPCTSTR GetName() const;
    LPCTSTR GetValue() const; // the text up to the first child

    bool HasAttributes();
    bool HasAttribute(LPCTSTR name);
    int GetAttributeCount(); // at most 64
    LPCTSTR GetAttributeName(int index);

    // The names of attributes are compared in any case. An unknown attribute is the empty text.
    LPCTSTR GetAttributeValue(int index);
    LPCTSTR GetAttributeValue(LPCTSTR name);

    // Copies a value, cut to the buffer (in characters); false when there is no such attribute.
    bool GetAttributeValue(int index, LPTSTR buffer, SIZE_T size);
    bool GetAttributeValue(LPCTSTR name, LPTSTR buffer, SIZE_T size);

private:
    CMarkupNode();
    CMarkupNode(const MarkupDocument* document, UINT index);
    const MarkupAttribute* AttributeAt(int index) const;
    const MarkupAttribute* FindAttribute(LPCTSTR name) const;

    const MarkupDocument* m_pDocument;
    UINT m_uIndex;
};

} // namespace DuiLib

#pragma once

#include "Core/UIExport.h"
#include "Core/UIPlatform.h"

#include <vector>

namespace DuiLib {

// A resource: by name (the pointer is kept, not the text) or by number.
class UILIB_API STRINGorID {
public:
    STRINGorID(LPCTSTR name) : m_lpstr(name) {}
    STRINGorID(UINT id) : m_lpstr(MAKEINTRESOURCE(id)) {}

    LPCTSTR m_lpstr;
};

class UILIB_API CDuiPoint : public tagPOINT {
public:
    CDuiPoint();
    CDuiPoint(const POINT& point);
    CDuiPoint(int x, int y);
    CDuiPoint(LPARAM coordinates); // of a mouse message; signed
};

class UILIB_API CDuiSize : public tagSIZE {
public:
    CDuiSize();
    CDuiSize(const SIZE& size);
    CDuiSize(const RECT rect);
    CDuiSize(int width, int height);
};

class UILIB_API CDuiRect : public tagRECT {
public:
    CDuiRect();
    CDuiRect(const RECT& rect);
    CDuiRect(int left, int top, int right, int bottom);

    int GetWidth() const;
    int GetHeight() const;
    void Empty(); // all edges 0
    bool IsNull() const;
    void Join(const RECT& rect); // an empty argument counts with its position
    void ResetOffset();          // moves to (0, 0)
    void Normalize();            // swaps reversed edges
    void Offset(int x, int y);
    void Inflate(int x, int y);
    void Deflate(int x, int y);
    void Union(CDuiRect& rect); // an empty argument does not count
};

// A zero-terminated UTF-16 text. Its length is the distance to the first zero, also when a zero is
// put into it. An empty text owns no memory. Null pointers read as the empty text.
class UILIB_API CDuiString {
public:
    // The longest text that SmallFormat makes.
    enum { MAX_LOCAL_STRING_LEN = 63 };

    CDuiString() noexcept : m_pstr(s_szEmpty), m_nLength(0), m_nCapacity(0) {}
    CDuiString(const TCHAR character);
    CDuiString(const CDuiString& other);
    CDuiString(CDuiString&& other) noexcept;
    CDuiString(LPCTSTR text, int length = -1); // at most that many characters; -1: all
    ~CDuiString();

    void Empty();
    bool IsEmpty() const { return m_nLength == 0; }
    int GetLength() const { return m_nLength; }
    TCHAR GetAt(int index) const { return m_pstr[index]; } // 0 to the length, not checked
    TCHAR operator[](int index) const { return m_pstr[index]; }
    void SetAt(int index, TCHAR character); // 0 to the length - 1

    // Valid until the next change.
    LPCTSTR GetData() const { return m_pstr; }
    operator LPCTSTR() const { return m_pstr; }

    void Append(LPCTSTR text);
    void Assign(LPCTSTR text, int length = -1);

    const CDuiString& operator=(const CDuiString& other);
    const CDuiString& operator=(CDuiString&& other) noexcept;
    const CDuiString& operator=(const TCHAR character);
    const CDuiString& operator=(LPCTSTR text);
    const CDuiString& operator=(LPCSTR text); // in the ANSI code page
    const CDuiString& operator+=(const CDuiString& other);
    const CDuiString& operator+=(LPCTSTR text);
    const CDuiString& operator+=(const TCHAR character);
    const CDuiString& operator+=(LPCSTR text); // in the ANSI code page
    CDuiString operator+(const CDuiString& other) const;
    CDuiString operator+(LPCTSTR text) const;

    bool operator==(LPCTSTR text) const;
    bool operator!=(LPCTSTR text) const;
    bool operator<=(LPCTSTR text) const;
    bool operator<(LPCTSTR text) const;
    bool operator>=(LPCTSTR text) const;
    bool operator>(LPCTSTR text) const;
    bool operator==(const CDuiString& other) const;
    bool operator!=(const CDuiString& other) const;

    // Negative, 0 or positive, by code units.
    int Compare(LPCTSTR text) const;
    int CompareNoCase(LPCTSTR text) const;

    void MakeUpper();
    void MakeLower();

    // Positions and lengths are clamped to the text; a negative length of Mid means all the rest.
    CDuiString Left(int length) const;
    CDuiString Mid(int position, int length = -1) const;
    CDuiString Right(int length) const;

    CDuiString& TrimLeft();
    CDuiString& TrimRight();
    CDuiString& Trim();

    // The index of the first (last) match from the given position on, or -1.
    int Find(TCHAR character, int position = 0) const;
    int Find(LPCTSTR text, int position = 0) const;
    int ReverseFind(TCHAR character) const;

    // From left to right, not looking at what was put in. Returns the number of replacements.
    int Replace(LPCTSTR from, LPCTSTR to);

    // As printf; %s takes wide text with every C library. An argument may be the old text. Returns
    // the new length, or -1 when the format is refused.
    int __cdecl Format(LPCTSTR format, ...);
    int __cdecl SmallFormat(LPCTSTR format, ...); // at most 63 characters

protected:
    LPTSTR m_pstr;   // never null
    int m_nLength;   // characters before the terminating zero
    int m_nCapacity; // characters that fit before it; 0: m_pstr is the shared empty text

private:
    static TCHAR s_szEmpty[1];

    void Reserve(int capacity);
    void AppendCounted(LPCTSTR text, int length);
    void AssignCounted(LPCTSTR text, int length);
    void AppendNarrow(LPCSTR text);
    bool Owns(LPCTSTR text) const;
};

// The pieces between the separators, empty ones too. An empty text has no pieces; an empty
// separator leaves the text whole.
UILIB_API std::vector<CDuiString> StrSplit(CDuiString text, CDuiString separator);

// A growing array of pointers that it does not own.
class UILIB_API CStdPtrArray {
public:
    CStdPtrArray(int iPreallocSize = 0);
    CStdPtrArray(const CStdPtrArray& other);
    CStdPtrArray& operator=(const CStdPtrArray& other);
    ~CStdPtrArray();

    void Empty();          // releases the memory too
    void Resize(int size); // empties, then holds that many nulls
    bool IsEmpty() const { return m_nCount == 0; }
    int Find(LPVOID data) const; // index or -1
    bool Add(LPVOID data);
    bool SetAt(int index, LPVOID data);
    bool InsertAt(int index, LPVOID data);
    bool Remove(int index);
    int GetSize() const { return m_nCount; }
    LPVOID* GetData() { return m_ppVoid; }

    LPVOID GetAt(int index) const // null out of range
    {
        return index >= 0 && index < m_nCount ? m_ppVoid[index] : NULL;
    }
    LPVOID operator[](int index) const
    {
        assert(index >= 0 && index < m_nCount);
        return m_ppVoid[index];
    }

protected:
    LPVOID* m_ppVoid;
    int m_nCount;
    int m_nAllocated;

private:
    void Grow(int count);
};

// A growing array of records of one size, copied as raw memory.
class UILIB_API CStdValArray {
public:
    CStdValArray(int iElementSize, int iPreallocSize = 0);
    CStdValArray(const CStdValArray& other);
    CStdValArray& operator=(const CStdValArray& other);
    ~CStdValArray();

    void Empty();
    bool IsEmpty() const { return m_nCount == 0; }
    bool Add(LPCVOID data); // the record may be one of the array's own
    bool Remove(int index);
    int GetSize() const { return m_nCount; }
    LPVOID GetData() { return m_pVoid; }

    LPVOID GetAt(int index) const // the record's address; null out of range
    {
        return index >= 0 && index < m_nCount ? At(index) : NULL;
    }
    LPVOID operator[](int index) const
    {
        assert(index >= 0 && index < m_nCount);
        return At(index);
    }

protected:
    LPBYTE m_pVoid;
    int m_iElementSize;
    int m_nCount;
    int m_nAllocated;

private:
    LPBYTE At(int index) const { return m_pVoid + static_cast<size_t>(index) * m_iElementSize; }
    void Grow(int count);
};

// An entry of CStdStringPtrMap, linked into its bucket.
struct TITEM {
    CDuiString Key;
    LPVOID Data;
    TITEM* pPrev;
    TITEM* pNext;
};

// A hash map from text (copied, compared exactly) to pointers that it does not own.
//
// A copy is made member by member: it shares the buckets and entries with the original, so only one
// of the two may be changed or destroyed afterwards.
//
// Walking it: for (int i = 0; i < map.GetSize(); ++i) map.GetAt(i). Find within such a loop moves
// only entries that the loop has already met.
class UILIB_API CStdStringPtrMap {
public:
    CStdStringPtrMap(int nSize = 83); // buckets, at least 16
    ~CStdStringPtrMap();
    CStdStringPtrMap(const CStdStringPtrMap&) = default;
    CStdStringPtrMap& operator=(const CStdStringPtrMap&) = default;

    // Drops all entries. With 0 buckets the map takes no entry until the next Resize.
    void Resize(int nSize = 83);

    LPVOID Find(LPCTSTR key, bool optimize = true) const; // optimize: to the head of its bucket
    bool Insert(LPCTSTR key, LPVOID data);                // false when the key has a non-null value
    LPVOID Set(LPCTSTR key, LPVOID data);                 // the old value, or null
    bool Remove(LPCTSTR key);
    void RemoveAll();
    int GetSize() const { return m_nCount; }
    LPCTSTR GetAt(int index) const; // a key; null out of range; lives as long as the entry
    LPCTSTR operator[](int index) const { return GetAt(index); }

protected:
    TITEM** m_aT;
    int m_nBuckets;
    int m_nCount;

private:
    UINT BucketOf(LPCTSTR key) const;
    TITEM* Lookup(UINT bucket, LPCTSTR key) const;
    void LinkAsHead(UINT bucket, TITEM* item) const;
    void Unlink(UINT bucket, TITEM* item) const;
    void FreeItems();
};

// Shows the wait cursor while it lives.
class UILIB_API CWaitCursor {
public:
    CWaitCursor();
    ~CWaitCursor();
    CWaitCursor(const CWaitCursor&) = delete;
    CWaitCursor& operator=(const CWaitCursor&) = delete;

protected:
    HCURSOR m_hOrigCursor;
};

// A VARIANT that releases what it holds.
class UILIB_API CDuiVariant : public VARIANT {
public:
    CDuiVariant();
    CDuiVariant(int i);
    CDuiVariant(float f);
    CDuiVariant(LPOLESTR s);      // copied
    CDuiVariant(IDispatch* disp); // referenced
    CDuiVariant(const CDuiVariant& other);
    CDuiVariant& operator=(const CDuiVariant& other);
    ~CDuiVariant();
};

} // namespace DuiLib

#pragma once

#include <UIlib.h>

#include <list>
#include <string>
#include <unordered_map>

#include "quillet/Export.h"

namespace DuiLib {

// A thumbnail of the cache, which owns it.
struct ThumbnailData {
    bool loaded = false;                 // GDI+ could read the file
    HICON icon = nullptr;                // what the shell shows for a file that GDI+ could not read
    Gdiplus::Image* thumbnail = nullptr; // empty when nothing could be read
    std::list<std::wstring>::iterator position; // in the order of use
    int width = 0;                              // of the picture, rotated, in pixels
    int height = 0;
};

// The process-wide cache of thumbnails of picture files. The one that was not asked for longest
// goes first; there are never more than 201.
//
// Published: the path alone is the key, exactly as it is written; size, rotation and form of the
// request that made a thumbnail hold for all later ones. User-interface thread only. GDI+ must be
// running until the process ends.
class QUILLET_API ResourceQueue {
public:
    static ResourceQueue* GetInstance();

    // A copy shares the thumbnails and has an order of use of its own. What one of the two drops
    // is gone for the other too, so ask only one of them from then on.
    ResourceQueue(const ResourceQueue& other);
    ResourceQueue& operator=(const ResourceQueue& other);

    void SetManager(CPaintManagerUI* manager); // Published: kept only

    // The thumbnails are valid until their entry goes: use them for one paint.

    // Of 128 x 64 pixels; of a file that cannot be read the shell's icon. Never null.
    ThumbnailData* GetResource(const wchar_t* path);

    // Of twice width and height (pixels); rotation is 0, 90, 180 or 270 degrees, else none. Null
    // when the file cannot be read. Published: the numbers are read only, the reserved ones not
    // even that.
    ThumbnailData* GetResource(const wchar_t* path, int& width, int& height, int& reserved1,
                               int& reserved2, int rotation);

    // Of 384 x 448 pixels for a large tip, else as large as the picture; with reload made anew.
    // Null when the file cannot be read. Published: width and height have no meaning.
    ThumbnailData* GetResource(const wchar_t* path, int width, int height, int rotation,
                               bool largeTip, bool reload);

    // What the shell shows for an existing file; the caller owns it. Null when there is no such
    // file.
    static HICON GetDefaultIcon(const wchar_t* path);

private:
    ResourceQueue();
    virtual ~ResourceQueue();

    // Copies share the thumbnail, so each keeps for itself where the path stands in its own order.
    struct Entry {
        ThumbnailData* data;
        std::list<std::wstring>::iterator position;
    };

    ThumbnailData* FindAndTouch(const std::wstring& path);
    ThumbnailData* Store(const std::wstring& path, ThumbnailData* entry, Gdiplus::Image& picture,
                         bool loaded, SIZE size);
    void MakeRoom();
    void FindPositions();

    std::list<std::wstring> m_recency; // the one to go first in front
    std::unordered_map<std::wstring, Entry> m_entries;
    CPaintManagerUI* m_pManager = nullptr;
};

} // namespace DuiLib

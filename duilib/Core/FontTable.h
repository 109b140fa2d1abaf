#pragma once

#include "Core/UIPlatform.h"

#include "Core/UIRecords.h"

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace DuiLib {

// What a font looks like at a scale of 100 percent.
struct FontLook {
    std::wstring name;
    int size = 0; // pixels
    bool bold = false;
    bool underline = false;
    bool italic = false;
    bool strikeout = false;

    bool operator==(const FontLook&) const = default;
};

struct FontLookHash {
    std::size_t operator()(const FontLook& look) const;
};

// One look at the scales that were asked for. The records and their handles die with it.
class Font {
public:
    explicit Font(FontLook look);
    ~Font();
    Font(const Font&) = delete;
    Font& operator=(const Font&) = delete;

    const FontLook& Look() const { return m_look; }
    TFontInfo* At(int scale); // made when it is missing

    // Makes the one record of a window's own font anew.
    void Rescale(int scale);
    bool Owns(HFONT font) const;

private:
    struct Made {
        int scale;
        std::unique_ptr<TFontInfo> info;
    };

    FontLook m_look;
    std::vector<Made> m_made;
};

// Replaces the record's handle by one for the scale, and forgets its metrics.
void CreateFontHandle(TFontInfo& info, int scale);
void DeleteFontHandle(TFontInfo& info);

// Fills in the metrics of a font that has none yet.
void MeasureFont(TFontInfo& info, HDC dc);

// Fonts by id and by look.
class FontTable {
public:
    TFontInfo* Add(int id, FontLook look, int scale);
    TFontInfo* Find(int id, int scale) const; // null for an unknown id
    TFontInfo* Find(const FontLook& look, int scale) const;
    int IdOf(const FontLook& look) const; // -1 when there is none
    int IdOf(HFONT font) const;
    void Remove(int id);
    void Clear();
    void Rescale(int scale);
    std::size_t Count() const { return m_fonts.size(); }

private:
    std::unordered_map<int, std::unique_ptr<Font>> m_fonts;
    std::unordered_map<FontLook, int, FontLookHash> m_ids;
};

} // namespace DuiLib

#pragma once

#include "win32/TextParse.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <typeinfo>

// Attributes as tables: one row per name, found by hash.
namespace Quillet {

// What the value of an attribute looks like; for documentation.
enum class AttributeKind { Text, Boolean, Number, Colour, Rectangle, Size, Image, Choice };

// Whether the case of attribute names matters.
enum class NameMatch { Exact, NoCase };

template <class Control>
struct AttributeRow {
    std::wstring_view name;
    AttributeKind kind;
    void (*apply)(Control& self, LPCTSTR value);
};

// Told of a value that is not what its row expects; the row still makes of it what it can. Null for
// nobody; each module has its own.
inline void (*onBadAttributeValue)(std::wstring_view name, LPCTSTR value) = nullptr;

// Told of the rows of each table, one by one, that is asked for a name it does not have: so asking
// a control for a name that nobody has tells which attributes it offers, those of its own class
// first. Null for nobody; each module has its own.
using AttributeListener = void (*)(const std::type_info& control, std::wstring_view name,
                                   AttributeKind kind);
inline AttributeListener onUnknownAttribute = nullptr;

namespace AttributeDetail {

// Names in tables are plain ASCII, so no other letter has a second case.
constexpr wchar_t Fold(wchar_t unit)
{
    return unit >= L'A' && unit <= L'Z' ? static_cast<wchar_t>(unit + (L'a' - L'A')) : unit;
}

template <NameMatch match>
constexpr bool SameName(std::wstring_view first, std::wstring_view second)
{
    if constexpr (match == NameMatch::Exact) {
        return first == second;
    } else {
        if (first.size() != second.size())
            return false;
        for (std::size_t i = 0; i < first.size(); ++i) {
            if (Fold(first[i]) != Fold(second[i]))
                return false;
        }
        return true;
    }
}

template <NameMatch match>
constexpr std::uint32_t HashOf(std::wstring_view name)
{
    std::uint32_t hash = Text::kHashSeed;
    for (const wchar_t unit : name)
        hash = Text::HashStep(hash, match == NameMatch::NoCase ? Fold(unit) : unit);
    return hash;
}

// Not constexpr, so that reaching it while a table is made is a compile error that names the cause.
inline void TwoRowsHaveTheSameName() {}

} // namespace AttributeDetail

// A table of rows, in the order of their hashes.
template <NameMatch match, class Control, std::size_t n>
class AttributeTable {
public:
    consteval explicit AttributeTable(const AttributeRow<Control> (&rows)[n])
    {
        std::copy(rows, rows + n, m_rows.begin());
        std::sort(m_rows.begin(), m_rows.end(), [](const auto& first, const auto& second) {
            const auto firstHash = AttributeDetail::HashOf<match>(first.name);
            const auto secondHash = AttributeDetail::HashOf<match>(second.name);
            return firstHash != secondHash ? firstHash < secondHash : first.name < second.name;
        });
        for (std::size_t i = 0; i < n; ++i)
            m_hashes[i] = AttributeDetail::HashOf<match>(m_rows[i].name);
        for (std::size_t i = 0; i < n; ++i) {
            for (std::size_t j = i + 1; j < n && m_hashes[j] == m_hashes[i]; ++j) {
                if (AttributeDetail::SameName<match>(m_rows[i].name, m_rows[j].name))
                    AttributeDetail::TwoRowsHaveTheSameName();
            }
        }
    }

    constexpr const AttributeRow<Control>* Find(std::wstring_view name) const
    {
        const auto hash = AttributeDetail::HashOf<match>(name);
        const auto first = std::lower_bound(m_hashes.begin(), m_hashes.end(), hash);
        for (auto i = static_cast<std::size_t>(first - m_hashes.begin());
             i < n && m_hashes[i] == hash; ++i) {
            if (AttributeDetail::SameName<match>(m_rows[i].name, name))
                return &m_rows[i];
        }
        return nullptr;
    }

    // False when the table has no such row. A null value is given on as the empty text.
    bool Apply(Control& control, LPCTSTR name, LPCTSTR value) const
    {
        const auto* row = Find(Text::View(name));
        if (row == nullptr) {
            if (onUnknownAttribute != nullptr)
                TellRows();
            return false;
        }
        if (row->kind == AttributeKind::Colour && onBadAttributeValue && !Text::IsColour(value))
            onBadAttributeValue(row->name, value);
        row->apply(control, value != nullptr ? value : L"");
        return true;
    }

    constexpr std::span<const AttributeRow<Control>> Rows() const { return m_rows; }

private:
    void TellRows() const
    {
        for (const auto& row : m_rows)
            onUnknownAttribute(typeid(Control), row.name, row.kind);
    }

    std::array<AttributeRow<Control>, n> m_rows{};
    std::array<std::uint32_t, n> m_hashes{};
};

// Makes a table at compile time. Two rows of one name do not compile.
//
// static constexpr auto kTable = MakeAttributeTable<NameMatch::NoCase, CLabelUI>({
//     {L"align", AttributeKind::Choice, [](CLabelUI& self, LPCTSTR value) { ... }},
// });
template <NameMatch match = NameMatch::NoCase, class Control, std::size_t n>
consteval auto MakeAttributeTable(const AttributeRow<Control> (&rows)[n])
{
    return AttributeTable<match, Control, n>(rows);
}

} // namespace Quillet

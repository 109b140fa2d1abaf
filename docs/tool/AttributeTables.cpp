#include "docs/tool/AttributeTables.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <string_view>

namespace docs {

namespace {

constexpr std::string_view kBeginMark = "<!-- attributes ";
constexpr std::string_view kMarkEnd = " -->";
constexpr std::string_view kEndMark = "<!-- end attributes -->";
constexpr std::string_view kHeader = "| Attribute | Value | Effect |";

char Lower(char letter)
{
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + ('a' - 'A')) : letter;
}

struct LessNoCase {
    bool operator()(std::string_view first, std::string_view second) const
    {
        return std::ranges::lexicographical_compare(first, second, {}, &Lower, &Lower);
    }
};

std::string_view Trimmed(std::string_view text)
{
    constexpr std::string_view kBlanks = " \t\r";
    const auto first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::vector<std::string> LinesOf(std::string_view text)
{
    std::vector<std::string> lines;
    while (!text.empty()) {
        const auto end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        lines.emplace_back(line);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

std::string Joined(const std::vector<std::string>& lines)
{
    std::string text;
    for (const auto& line : lines)
        text.append(line).append("\n");
    return text;
}

// The class of a begin mark; nothing for any other line.
std::optional<std::string> MarkedClass(std::string_view line)
{
    line = Trimmed(line);
    if (!line.starts_with(kBeginMark) || !line.ends_with(kMarkEnd))
        return std::nullopt;
    line.remove_prefix(kBeginMark.size());
    line.remove_suffix(kMarkEnd.size());
    return std::string(Trimmed(line));
}

// The cells of a table's line, trimmed; a bar after a backslash belongs to its cell.
std::vector<std::string_view> CellsOf(std::string_view line)
{
    std::vector<std::string_view> cells;
    line = Trimmed(line);
    line.remove_prefix(1);
    std::size_t start = 0;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] == '\\') {
            ++i;
        } else if (line[i] == '|') {
            cells.push_back(Trimmed(line.substr(start, i - start)));
            start = i + 1;
        }
    }
    if (const auto rest = Trimmed(line.substr(std::min(start, line.size()))); !rest.empty())
        cells.push_back(rest);
    return cells;
}

bool IsRuler(std::string_view line)
{
    return line.find_first_not_of("|-: \t\r") == std::string_view::npos;
}

// The name between backticks.
std::optional<std::string> NameIn(std::string_view cell)
{
    if (cell.size() < 3 || cell.front() != '`' || cell.find('`', 1) != cell.size() - 1)
        return std::nullopt;
    return std::string(cell.substr(1, cell.size() - 2));
}

class Writer {
public:
    explicit Writer(const std::vector<ClassAttributes>& classes)
    {
        for (const auto& each : classes)
            m_classes.emplace(each.name, &each);
    }

    Rewriting Rewrite(std::vector<Page> pages)
    {
        for (const auto& page : pages) {
            for (const auto& line : LinesOf(page.text)) {
                if (const auto name = MarkedClass(line))
                    m_pageOf.emplace(*name, page.file);
            }
        }
        for (auto& page : pages)
            page.text = RewritePage(page);
        for (const auto& [name, each] : m_classes) {
            if (!each->own.empty() && !m_pageOf.contains(name))
                m_complaints.push_back("no page has the attributes of " + name);
        }
        return {std::move(pages), std::move(m_complaints)};
    }

private:
    std::string RewritePage(const Page& page)
    {
        m_file = page.file;
        const auto lines = LinesOf(page.text);
        std::vector<std::string> written;
        for (std::size_t i = 0; i < lines.size(); ++i) {
            written.push_back(lines[i]);
            if (Trimmed(lines[i]) == kEndMark)
                Complain("end mark without a table");
            const auto name = MarkedClass(lines[i]);
            if (!name)
                continue;

            auto end = i + 1;
            while (end < lines.size() && Trimmed(lines[end]) != kEndMark &&
                   !MarkedClass(lines[end]))
                ++end;
            if (end == lines.size() || Trimmed(lines[end]) != kEndMark) {
                Complain(*name + ": the table has no end mark");
                continue;
            }
            const std::vector<std::string> rows(lines.begin() + static_cast<std::ptrdiff_t>(i + 1),
                                                lines.begin() + static_cast<std::ptrdiff_t>(end));
            const auto known = m_classes.find(*name);
            if (known == m_classes.end())
                Complain(*name + ": there is no such class");
            else if (!m_written.insert(*name).second)
                Complain(*name + ": has another table");
            if (known == m_classes.end())
                written.insert(written.end(), rows.begin(), rows.end());
            else
                WriteTable(*known->second, EffectsIn(*known->second, rows), written);
            written.push_back(lines[end]);
            i = end;
        }
        return Joined(written);
    }

    using Effects = std::map<std::string, std::string, LessNoCase>;

    // What was written by hand, by the names of attributes that still exist.
    Effects EffectsIn(const ClassAttributes& ofClass, const std::vector<std::string>& rows)
    {
        Effects effects;
        for (const auto& row : rows) {
            if (!Trimmed(row).starts_with('|') || IsRuler(row))
                continue;
            const auto cells = CellsOf(row);
            if (!cells.empty() && cells[0] == "Attribute")
                continue;
            const auto name = cells.empty() ? std::nullopt : NameIn(cells[0]);
            if (!name || cells.size() > 3) {
                Complain(ofClass.name + ": not `name`, value and effect: " + row);
                continue;
            }
            const bool exists = std::ranges::any_of(
                ofClass.own, [&](const auto& attribute) { return attribute.name == *name; });
            if (!exists)
                Complain(ofClass.name + ": there is no attribute \"" + *name + "\"");
            else if (!effects.emplace(*name, cells.size() == 3 ? cells[2] : "").second)
                Complain(ofClass.name + ": a second row of \"" + *name + "\"");
        }
        return effects;
    }

    void WriteTable(const ClassAttributes& ofClass, const Effects& effects,
                    std::vector<std::string>& written)
    {
        auto own = ofClass.own;
        std::ranges::sort(own, LessNoCase(), &Attribute::name);
        if (own.empty()) {
            written.push_back("No attributes of its own.");
        } else {
            written.emplace_back(kHeader);
            written.push_back("|---|---|---|");
        }
        for (const auto& attribute : own) {
            const auto found = effects.find(attribute.name);
            const std::string effect = found != effects.end() ? found->second : std::string();
            if (effect.empty())
                Complain(ofClass.name + ": attribute \"" + attribute.name +
                         "\" has no effect text");
            written.push_back("| `" + attribute.name + "` | " + attribute.value + " | " + effect +
                              (effect.empty() ? "|" : " |"));
        }
        if (!ofClass.base.empty()) {
            const auto page = m_pageOf.find(ofClass.base);
            const std::string base = page != m_pageOf.end()
                                         ? "[" + ofClass.base + "](" + page->second + ")"
                                         : ofClass.base;
            written.push_back("");
            written.push_back("Inherited: all attributes of " + base + ".");
        }
    }

    void Complain(const std::string& what) { m_complaints.push_back(m_file + ": " + what); }

    std::map<std::string, const ClassAttributes*> m_classes;
    std::map<std::string, std::string> m_pageOf; // class, file
    std::set<std::string> m_written;             // classes whose table was written
    std::string m_file;
    std::vector<std::string> m_complaints;
};

} // namespace

Rewriting RewriteTables(const std::vector<ClassAttributes>& classes, std::vector<Page> pages)
{
    return Writer(classes).Rewrite(std::move(pages));
}

std::vector<std::string> CheckTables(const std::vector<ClassAttributes>& classes,
                                     const std::vector<Page>& pages)
{
    auto [rewritten, complaints] = RewriteTables(classes, pages);
    for (std::size_t i = 0; i < pages.size(); ++i) {
        const std::string start = pages[i].file + ": ";
        if (std::ranges::any_of(complaints,
                                [&](const auto& line) { return line.starts_with(start); }))
            continue;
        const auto are = LinesOf(pages[i].text);
        const auto shouldBe = LinesOf(rewritten[i].text);
        const auto [is, wanted] = std::ranges::mismatch(are, shouldBe);
        if (wanted != shouldBe.end())
            complaints.push_back(start + "line " + std::to_string(is - are.begin() + 1) +
                                 " should be: " + *wanted);
        else if (is != are.end())
            complaints.push_back(start + "line " + std::to_string(is - are.begin() + 1) +
                                 " should not be there: " + *is);
    }
    return complaints;
}

} // namespace docs

#include "interface/HeaderScan.h"

#include <cctype>
#include <regex>

namespace interface_test {

namespace {

std::string WithoutCommentsAndDirectives(const std::string& header)
{
    static const std::regex kComments(R"(//[^\n]*|/\*[\s\S]*?\*/)");
    static const std::regex kDirectives(R"((^|\n)[ \t]*#(\\\r?\n|[^\n])*)");
    return std::regex_replace(std::regex_replace(header, kComments, ""), kDirectives, "$1");
}

bool EndsWithWord(const std::string& text, const char* word)
{
    static const std::regex kLastWord(R"((\w+)\s*$)");
    std::smatch match;
    return std::regex_search(text, match, kLastWord) && match[1] == word;
}

// What stands between the braces of one class.
class ClassBody {
public:
    ClassBody(std::string name, bool isStruct, std::vector<Named>& found)
        : m_name(std::move(name)), m_isOpen(isStruct), m_found(found)
    {
    }

    void Read(const std::string& text, std::size_t position)
    {
        int depth = 1;
        for (; depth > 0 && position < text.size(); ++position) {
            const char c = text[position];
            if (c == '{')
                ++depth;
            else if (c == '}' && --depth == 1)
                EndStatement();
            else if (depth == 1 && c == ';')
                EndStatement();
            else if (depth == 1 && c == ':' && ChangeAccess())
                m_statement.clear();
            else if (depth == 1)
                m_statement += c;
        }
    }

private:
    bool ChangeAccess()
    {
        const bool opens =
            EndsWithWord(m_statement, "public") || EndsWithWord(m_statement, "protected");
        if (!opens && !EndsWithWord(m_statement, "private"))
            return false;
        m_isOpen = opens;
        return true;
    }

    void EndStatement()
    {
        static const std::regex kOperation(R"((~?\w+)\s*\()");
        static const std::regex kOther(
            R"(\b(friend|using|enum|typedef|struct|class|operator|override|delete)\b)");
        std::smatch match;
        if (m_isOpen && !std::regex_search(m_statement, kOther) &&
            std::regex_search(m_statement, match, kOperation)) {
            const std::string name = match[1];
            if (name != m_name && name[0] != '~')
                m_found.push_back({m_name, name});
        }
        m_statement.clear();
    }

    std::string m_name;
    bool m_isOpen;
    std::vector<Named>& m_found;
    std::string m_statement;
};

} // namespace

std::vector<Named> OperationsIn(const std::string& header)
{
    // Nested classes are indented, those at namespace scope are not.
    static const std::regex kClass(
        R"((?:^|\n)(?:typedef )?(class|struct) (?:UILIB_API )?(\w+)[^;{]*\{)");
    std::vector<Named> found;
    const std::string text = WithoutCommentsAndDirectives(header);
    for (std::sregex_iterator match(text.begin(), text.end(), kClass), end; match != end; ++match) {
        ClassBody body((*match)[2], (*match)[1] == "struct", found);
        body.Read(text, static_cast<std::size_t>(match->position() + match->length()));
    }
    return found;
}

} // namespace interface_test

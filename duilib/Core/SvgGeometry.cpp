#include "Core/SvgGeometry.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <numbers>
#include <string>

namespace DuiLib::Svg {

namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kLargestNumber = 1e7;

bool IsSpace(wchar_t character)
{
    return character == L' ' || (character >= L'\t' && character <= L'\r');
}

bool IsDigit(wchar_t character)
{
    return character >= L'0' && character <= L'9';
}

bool IsLetter(wchar_t character)
{
    return (character >= L'a' && character <= L'z') || (character >= L'A' && character <= L'Z');
}

// How many characters of the text are a number: sign, digits, point, exponent.
std::size_t NumberLength(std::wstring_view text)
{
    std::size_t at = 0;
    const auto digits = [&] {
        const auto first = at;
        while (at < text.size() && IsDigit(text[at]))
            at++;
        return at - first;
    };
    const auto sign = [&] {
        if (at < text.size() && (text[at] == L'+' || text[at] == L'-'))
            at++;
    };

    sign();
    auto count = digits();
    if (at < text.size() && text[at] == L'.') {
        at++;
        count += digits();
    }
    if (count == 0)
        return 0;

    const auto mantissa = at;
    if (at < text.size() && (text[at] == L'e' || text[at] == L'E')) {
        at++;
        sign();
        if (digits() == 0)
            at = mantissa; // the unit "em", or a letter of its own
    }
    return at;
}

double ToNumber(std::wstring_view text)
{
    std::string narrow;
    for (const wchar_t character : text.substr(!text.empty() && text.front() == L'+' ? 1 : 0))
        narrow += static_cast<char>(character);
    double value = 0;
    std::from_chars(narrow.data(), narrow.data() + narrow.size(), value);
    return std::clamp(value, -kLargestNumber, kLargestNumber);
}

bool ParseOneTransform(std::wstring_view name, const std::vector<double>& numbers, Matrix& matrix)
{
    const auto count = numbers.size();
    const auto at = [&](std::size_t index, double otherwise) {
        return index < count ? numbers[index] : otherwise;
    };
    if (name == L"matrix" && count == 6) {
        matrix = {numbers[0], numbers[1], numbers[2], numbers[3], numbers[4], numbers[5]};
        return true;
    }
    if (count == 0)
        return false;
    if (name == L"translate") {
        matrix = {.e = at(0, 0), .f = at(1, 0)};
        return true;
    }
    if (name == L"scale") {
        matrix = {.a = at(0, 1), .d = at(1, at(0, 1))};
        return true;
    }

    const double angle = at(0, 0) * kPi / 180;
    if (name == L"rotate") {
        const Matrix turn{
            std::cos(angle), std::sin(angle), -std::sin(angle), std::cos(angle), 0, 0};
        const Point centre{at(1, 0), at(2, 0)};
        matrix =
            Matrix{.e = centre.x, .f = centre.y} * turn * Matrix{.e = -centre.x, .f = -centre.y};
        return true;
    }
    if (name == L"skewX") {
        matrix = {.c = std::tan(angle)};
        return true;
    }
    if (name == L"skewY") {
        matrix = {.b = std::tan(angle)};
        return true;
    }
    return false;
}

} // namespace

Point Matrix::Apply(Point point) const
{
    return {a * point.x + c * point.y + e, b * point.x + d * point.y + f};
}

Matrix Matrix::operator*(const Matrix& inner) const
{
    return {a * inner.a + c * inner.b,     b * inner.a + d * inner.b,
            a * inner.c + c * inner.d,     b * inner.c + d * inner.d,
            a * inner.e + c * inner.f + e, b * inner.e + d * inner.f + f};
}

double Matrix::Scale() const
{
    return std::sqrt(std::abs(a * d - b * c));
}

Scanner::Scanner(std::wstring_view text) : m_rest(text) {}

void Scanner::SkipSeparators()
{
    while (!m_rest.empty() && (IsSpace(m_rest.front()) || m_rest.front() == L','))
        m_rest.remove_prefix(1);
}

bool Scanner::AtEnd()
{
    SkipSeparators();
    return m_rest.empty();
}

bool Scanner::Number(double& value)
{
    SkipSeparators();
    const auto length = NumberLength(m_rest);
    if (length == 0)
        return false;
    value = ToNumber(m_rest.substr(0, length));
    m_rest.remove_prefix(length);
    return true;
}

bool Scanner::Flag(bool& value)
{
    SkipSeparators();
    if (m_rest.empty() || (m_rest.front() != L'0' && m_rest.front() != L'1'))
        return false;
    value = m_rest.front() == L'1';
    m_rest.remove_prefix(1);
    return true;
}

wchar_t Scanner::Letter()
{
    SkipSeparators();
    if (m_rest.empty() || !IsLetter(m_rest.front()))
        return 0;
    const wchar_t letter = m_rest.front();
    m_rest.remove_prefix(1);
    return letter;
}

std::wstring_view Scanner::Word()
{
    SkipSeparators();
    const auto end = std::ranges::find_if_not(m_rest, IsLetter);
    const auto word = m_rest.substr(0, static_cast<std::size_t>(end - m_rest.begin()));
    m_rest.remove_prefix(word.size());
    return word;
}

bool Scanner::Skip(wchar_t expected)
{
    SkipSeparators();
    if (m_rest.empty() || m_rest.front() != expected)
        return false;
    m_rest.remove_prefix(1);
    return true;
}

bool ParseLength(std::wstring_view text, double reference, double& value)
{
    struct Unit {
        std::wstring_view name;
        double pixels;
    };
    static constexpr std::array kUnits{
        Unit{L"", 1},           Unit{L"px", 1},  Unit{L"pt", 96.0 / 72},
        Unit{L"pc", 16},        Unit{L"in", 96}, Unit{L"cm", 96 / 2.54},
        Unit{L"mm", 96 / 25.4}, Unit{L"em", 16}, Unit{L"ex", 8},
    };

    Scanner scanner(text);
    double number = 0;
    if (!scanner.Number(number))
        return false;
    if (scanner.Skip(L'%')) {
        value = number * reference / 100;
        return scanner.AtEnd();
    }
    const auto word = scanner.Word();
    const auto unit = std::ranges::find(kUnits, word, &Unit::name);
    if (unit == kUnits.end() || !scanner.AtEnd())
        return false;
    value = number * unit->pixels;
    return true;
}

bool ParseTransform(std::wstring_view text, Matrix& matrix)
{
    Scanner scanner(text);
    Matrix all;
    while (!scanner.AtEnd()) {
        const auto name = scanner.Word();
        if (!scanner.Skip(L'('))
            return false;
        std::vector<double> numbers;
        double number = 0;
        while (scanner.Number(number))
            numbers.push_back(number);
        Matrix one;
        if (!scanner.Skip(L')') || !ParseOneTransform(name, numbers, one))
            return false;
        all = all * one;
    }
    matrix = all;
    return true;
}

} // namespace DuiLib::Svg

#include "quillet/quillet.h"
#include "support/ControlHost.h"
#include "support/TempFolder.h"
#include "tests/docs/Files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <regex>
#include <set>

using namespace DuiLib;

namespace {

struct Example {
    std::string where; // page and line
    std::string element;
    std::string text;
};

// The ```xml blocks of all pages, by their first element.
std::vector<Example> Examples()
{
    static const std::regex kFirstElement(R"(<(\w+))");
    constexpr std::string_view kOpen = "```xml\n";
    auto files = test_docs::FilesIn("docs", ".md");
    files.push_back(test_docs::FileAt("README.md"));

    std::vector<Example> examples;
    for (const auto& file : files) {
        const auto page = test_docs::Read(file);
        for (auto i = page.find(kOpen); i != std::string::npos; i = page.find(kOpen, i)) {
            i += kOpen.size();
            const auto text = page.substr(i, page.find("```", i) - i);
            const auto line =
                std::count(page.begin(), page.begin() + static_cast<std::ptrdiff_t>(i), '\n');
            std::smatch element;
            if (std::regex_search(text, element, kFirstElement))
                examples.push_back(
                    {file.filename().string() + " line " + std::to_string(line), element[1], text});
            i += text.size();
        }
    }
    return examples;
}

CControlUI* CreateOfTheLibrary(const std::wstring& element)
{
    if (element == L"ToggleSwitch")
        return CToggleSwitchUI::CreateControl();
    if (element == L"RoundedRectButton")
        return CRoundedRectButtonUI::CreateControl();
    return nullptr;
}

// Creates the library's controls, as the examples' application does.
class LibraryControls : public IDialogBuilderCallback {
public:
    CControlUI* CreateControl(LPCTSTR element) override { return CreateOfTheLibrary(element); }
};

std::wstring Wide(const std::string& text)
{
    const int length = ::MultiByteToWideChar(CP_UTF8, 0, text.c_str(), -1, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    ::MultiByteToWideChar(CP_UTF8, 0, text.c_str(), -1, wide.data(), length);
    return wide;
}

bool IsControl(const std::string& element)
{
    const std::wstring name(element.begin(), element.end());
    const std::unique_ptr<CControlUI> made(CreateOfTheLibrary(name));
    const std::unique_ptr<CControlUI> known(
        CControlFactory::GetInstance()->CreateControl((L"C" + name + L"UI").c_str()));
    return made != nullptr || known != nullptr;
}

std::set<std::string> AttributeNames(const std::string& text)
{
    static const std::regex kName(R"(\s(\w+)\s*=\s*")");
    std::set<std::string> names;
    for (std::sregex_iterator i(text.begin(), text.end(), kName), end; i != end; ++i)
        names.insert((*i)[1]);
    return names;
}

// Attributes that no class knows end up as custom ones. A rounded button hands those that it knows
// on to its base as well, which does not know them.
void ExpectNoCustomAttributes(CControlUI& control, const std::set<std::string>& names)
{
    for (const auto& name : names) {
        if (name == "roundwidth" && control.GetClass() == std::wstring_view(L"RoundedRectButtonUI"))
            continue;
        EXPECT_EQ(control.GetCustomAttribute(std::wstring(name.begin(), name.end()).c_str()),
                  nullptr)
            << name << " of a " << test::Utf8(control.GetClass());
    }
    auto* const container = static_cast<IContainerUI*>(control.GetInterface(L"IContainer"));
    for (int i = 0; container != nullptr && i < container->GetCount(); ++i)
        ExpectNoCustomAttributes(*container->GetItemAt(i), names);
}

// What the examples name: the files of docs/snippets and the gallery's pictures.
class ResourceFolder {
public:
    ResourceFolder()
    {
        constexpr auto kAll = std::filesystem::copy_options::recursive;
        const std::filesystem::path files = m_folder / L"files";
        for (const char* folder : {"docs/snippets", "gallery/skin/pictures"})
            std::filesystem::copy(test_docs::FileAt(folder), files, kAll);
        std::filesystem::copy(test_docs::FileAt("gallery/skin/drawable"), files / "drawable", kAll);
        CPaintManagerUI::SetResourcePath(files.c_str());
    }
    ~ResourceFolder() { CPaintManagerUI::SetResourcePath(L""); }
    ResourceFolder(const ResourceFolder&) = delete;
    ResourceFolder& operator=(const ResourceFolder&) = delete;

private:
    test::TempFolder m_folder;
};

} // namespace

TEST(DocumentedExamplesTest, EveryExampleBuildsWithoutFailureAndKnowsItsAttributes)
{
    const ResourceFolder resources;
    LibraryControls callback;
    int built = 0;
    for (const auto& example : Examples()) {
        SCOPED_TRACE(example.where);
        const bool isSkin = example.element == "Window";
        if (!isSkin && !IsControl(example.element))
            continue;
        test::ControlHost host(600, 400);
        CPaintManagerUI::SetLastErrorText(L"");
        const std::string text =
            isSkin ? example.text
                   : "<Examples><VerticalLayout>" + example.text + "</VerticalLayout></Examples>";
        CControlUI* const root = host.Load(Wide(text).c_str(), &callback);
        ASSERT_NE(root, nullptr);
        EXPECT_STREQ(CPaintManagerUI::GetLastErrorText(), L"");
        ExpectNoCustomAttributes(*root, AttributeNames(text));
        ++built;
    }
    EXPECT_GE(built, 15);
}

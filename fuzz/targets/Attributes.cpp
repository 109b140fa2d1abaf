#include "fuzz/Names.h"
#include "fuzz/engine/GuardedText.h"
#include "fuzz/targets/GallerySkin.h"
#include "fuzz/targets/HiddenWindow.h"
#include "fuzz/targets/TargetList.h"
#include "fuzz/targets/Words.h"

#include <stdexcept>

namespace fuzz {

using namespace DuiLib;

namespace {

constexpr std::size_t kNamesInASeed = 30;
constexpr std::size_t kClasses = std::size(kToolkitClasses) + std::size(kQuilletControls);

std::unique_ptr<CControlUI> Make(std::size_t index)
{
    if (index < std::size(kToolkitClasses))
        return std::unique_ptr<CControlUI>(
            CControlFactory::GetInstance()->CreateControl(kToolkitClasses[index]));
    return std::unique_ptr<CControlUI>(
        kQuilletControls[index - std::size(kToolkitClasses)].create());
}

void SetAttributes(CControlUI& control, std::wstring_view lines)
{
    static GuardedText nameText(64 * 1024);
    static GuardedText valueText(64 * 1024);
    while (!lines.empty()) {
        const auto end = std::min(lines.find(L'\n'), lines.size());
        const auto line = lines.substr(0, end);
        lines.remove_prefix(std::min(end + 1, lines.size()));
        const auto equals = std::min(line.find(L'='), line.size());
        const auto value = line.substr(std::min(equals + 1, line.size()));
        try {
            control.SetAttribute(nameText.Place(line.substr(0, equals)), valueText.Place(value));
        } catch (const std::logic_error&) {
            // One control answers a number that is none with the standard errors.
        }
    }
}

// The first byte is the class, the second one how to treat it; then lines "name=value".
void Run(ByteView input)
{
    if (input.size() < 2)
        return;
    UseGallerySkin();
    HiddenWindow& window = SharedWindow();
    auto control = Make(std::to_integer<std::size_t>(input[0]) % kClasses);
    if (!control)
        return;
    const auto how = std::to_integer<unsigned>(input[1]);
    const std::wstring lines = Widen(input.subspan(2));

    auto root = std::make_unique<CVerticalLayoutUI>();
    CControlUI& set = *control;
    if ((how & 1) != 0)
        SetAttributes(set, lines);
    root->Add(control.release());
    window.Manager().AttachDialog(root.release());
    if ((how & 1) == 0)
        SetAttributes(set, lines);
    window.LayOutAndPaint();
    if ((how & 6) == 0) {
        window.Use(HashOf(input));
        window.Tick();
        window.LayOutAndPaint();
    }
    if ((how & 8) != 0 && window.Lives() && window.Manager().GetRoot())
        set.SetText(nullptr);
    window.Pump();
}

// Every class with every name, a few at a time, and values by turns.
std::vector<Bytes> Seeds()
{
    const auto names = AttributeNames();
    const auto values = AttributeValues();
    std::vector<Bytes> seeds;
    std::size_t turn = 0;
    for (std::size_t index = 0; index < kClasses; ++index) {
        for (std::size_t first = 0; first < names.size(); first += kNamesInASeed) {
            Bytes seed{static_cast<std::byte>(index), static_cast<std::byte>(turn)};
            for (std::size_t i = first; i < std::min(first + kNamesInASeed, names.size()); ++i) {
                const auto& value = values[++turn % values.size()];
                seed.insert(seed.end(), names[i].begin(), names[i].end());
                seed.push_back(std::byte{'='});
                seed.insert(seed.end(), value.begin(), value.end());
                seed.push_back(std::byte{'\n'});
            }
            seeds.push_back(std::move(seed));
        }
    }
    return seeds;
}

std::vector<Bytes> Dictionary()
{
    auto words = AttributeNames();
    const auto values = AttributeValues();
    // As often as names, which are more.
    for (std::size_t i = 0; i < 3; ++i)
        Append(words, values);
    return words;
}

} // namespace

const Target kAttributesTarget{"attributes", &Run, &Seeds, &Dictionary, &CloseSharedWindow};

} // namespace fuzz

#include "host/Reports.h"

#include "host/Files.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdio>
#include <string_view>
#include <utility>

namespace Grimworks {

namespace {

constexpr std::size_t kNumberWidth = 4;
constexpr std::size_t kNameWidth = 32;
constexpr std::size_t kValueWidth = 9;
constexpr std::size_t kDisplayWidth = 16;
constexpr std::size_t kCaptionWidth = 16;

constexpr std::array<std::string_view, 7> kQuestions{"receiveVstEvents",
                                                     "receiveVstMidiEvent",
                                                     "receiveVstTimeInfo",
                                                     "sendVstEvents",
                                                     "sendVstMidiEvent",
                                                     "hasCockosExtensions",
                                                     "bypass"};

constexpr std::array<std::pair<std::int32_t, std::string_view>, 6> kFlags{{
    {EffectFlag::HasEditor, "editor"},
    {EffectFlag::MonoInput, "mono input"},
    {EffectFlag::CanReplacing, "replacing"},
    {EffectFlag::Chunks, "chunks"},
    {EffectFlag::Instrument, "instrument"},
    {EffectFlag::CanDoubleReplacing, "double replacing"},
}};

/// Text filled up with blanks; one blank always follows.
std::string Column(std::string text, std::size_t width) {
    text.resize(std::max(text.size(), width), ' ');
    return text + ' ';
}

std::string NumberColumn(int number) {
    const std::string digits = std::to_string(number);
    return std::string(kNumberWidth - std::min(kNumberWidth, digits.size()), ' ') + digits + "  ";
}

std::string Trimmed(std::string line) {
    while (line.ends_with(' '))
        line.pop_back();
    return line;
}

std::string FlagsText(std::int32_t flags) {
    std::array<char, 16> number{};
    std::snprintf(number.data(), number.size(), "0x%X", std::bit_cast<std::uint32_t>(flags));
    std::string text = number.data();
    for (const auto& [bit, meaning] : kFlags) {
        if ((flags & bit) != 0) text += ", " + std::string(meaning);
    }
    return text;
}

/// The id as a number and as the four letters that it has in memory.
std::string IdText(std::int32_t id) {
    std::array<char, 16> number{};
    std::snprintf(number.data(), number.size(), "0x%08X", std::bit_cast<std::uint32_t>(id));
    std::string letters;
    for (const char letter : std::bit_cast<std::array<char, 4>>(id)) {
        letters += letter >= ' ' && letter <= '~' ? letter : '.';
    }
    return std::string(number.data()) + " \"" + letters + "\"";
}

/// Extended interfaces answer with more than yes and no; such numbers are known by their hexadecimal form.
std::string AnswerText(std::intptr_t answer) {
    if (answer >= -1 && answer <= 1) return std::to_string(answer);
    std::array<char, 24> number{};
    std::snprintf(number.data(), number.size(), "0x%llX", static_cast<unsigned long long>(answer));
    return {number.data()};
}

std::string CategoryText(std::intptr_t category) {
    if (category == kCategorySynth) return "2 (synthesizer)";
    if (category == kCategoryEffect) return "1 (effect)";
    return std::to_string(category);
}

class Sheet {
public:
    explicit Sheet(std::ostream& stream) : out(stream) {}

    void Line(std::string_view caption, const std::string& text) {
        out << Trimmed(Column(std::string(caption), kCaptionWidth) + text) << '\n';
    }

    void Line(std::string_view caption, std::intptr_t number) { Line(caption, std::to_string(number)); }

private:
    std::ostream& out;
};

std::string PinText(PluginHost& host, int opcode, int index) {
    VstPinProperties pin{};
    if (host.Dispatch(opcode, index, 0, &pin) == 0) return "no properties";
    pin.label[sizeof pin.label - 1] = '\0';
    std::string text = pin.label;
    if ((pin.flags & PinFlag::Active) != 0) text += ", active";
    if ((pin.flags & PinFlag::StereoPair) != 0) text += ", stereo pair";
    return text;
}

} // namespace

void PrintParameters(PluginHost& host, std::ostream& out) {
    out << Column("  id", kNumberWidth + 1) << Column("name", kNameWidth) << Column("value", kValueWidth)
        << Column("display", kDisplayWidth) << "label\n";
    for (int id = 0; id < host.ParameterCount(); ++id) {
        out << Trimmed(NumberColumn(id) + Column(host.ParameterName(id), kNameWidth) +
                       Column(FixedText(host.Parameter(id), 6), kValueWidth) +
                       Column(host.ParameterDisplay(id), kDisplayWidth) + host.ParameterLabel(id))
            << '\n';
    }
}

void PrintPrograms(PluginHost& host, std::ostream& out) {
    for (int i = 0; i < host.ProgramCount(); ++i) {
        out << Trimmed(NumberColumn(i + 1) + host.ProgramName(i)) << '\n';
    }
}

void PrintCheck(PluginHost& host, const std::filesystem::path& modulePath, std::ostream& out) {
    const AEffect& record = host.Record();
    Sheet sheet(out);
    sheet.Line("module", TextFromPath(modulePath));
    sheet.Line("name", host.Text(PlugOp::GetEffectName));
    sheet.Line("vendor", host.Text(PlugOp::GetVendorString));
    sheet.Line("product", host.Text(PlugOp::GetProductString));
    sheet.Line("version", record.version);
    sheet.Line("vendor version", host.Dispatch(PlugOp::GetVendorVersion));
    sheet.Line("interface", host.Dispatch(PlugOp::GetInterfaceVersion));
    sheet.Line("id", IdText(record.uniqueID));
    sheet.Line("category", CategoryText(host.Dispatch(PlugOp::GetCategory)));
    sheet.Line("flags", FlagsText(record.flags));
    sheet.Line("parameters", record.numParams);
    sheet.Line("programs", record.numPrograms);
    sheet.Line("inputs", record.numInputs);
    sheet.Line("outputs", record.numOutputs);
    for (int i = 0; i < record.numInputs; ++i) {
        sheet.Line("input " + std::to_string(i + 1), PinText(host, PlugOp::GetInputProperties, i));
    }
    for (int i = 0; i < record.numOutputs; ++i) {
        sheet.Line("output " + std::to_string(i + 1), PinText(host, PlugOp::GetOutputProperties, i));
    }
    sheet.Line("latency", record.initialDelay);
    sheet.Line("tail", host.Dispatch(PlugOp::GetTailSize));
    for (const std::string_view question : kQuestions) {
        std::string asked(question);
        sheet.Line("can do",
                   Column(asked, 20) + AnswerText(host.Dispatch(PlugOp::CanDo, 0, 0, asked.data())));
    }
    sheet.Line("program",
               std::to_string(host.CurrentProgram() + 1) + " " + host.Text(PlugOp::GetProgramName));
    out << "all programs\n";
    PrintPrograms(host, out);
}

std::string PeakText(double peak) {
    return peak > 0.0 ? FixedText(20.0 * std::log10(peak), 1) + " dBFS" : "none";
}

std::string FixedText(double value, int decimals) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%.*f", decimals, value);
    return {text.data()};
}

} // namespace Grimworks

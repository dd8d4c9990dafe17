#include "tests/support/ReferenceCase.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iterator>
#include <limits>
#include <sstream>
#include <stdexcept>

namespace Grimworks::Testing {

namespace {

std::vector<char> ReadFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error("cannot read " + path.string());
    return {std::istreambuf_iterator<char>(file), {}};
}

ReferenceCommand ParseCommand(const std::string& word, std::istringstream& line,
                              const std::filesystem::path& folder) {
    ReferenceCommand command{};
    line >> command.block;
    if (word == "state") {
        std::string file;
        line >> file;
        command.kind = ReferenceCommand::Kind::State;
        command.chunk = ReadFile(folder / file);
    } else if (word == "midi") {
        command.kind = ReferenceCommand::Kind::Midi;
        line >> command.offset;
        for (std::uint8_t& byte : command.message) {
            int number = 0;
            line >> number;
            byte = static_cast<std::uint8_t>(number);
        }
    } else if (word == "nparam") {
        command.kind = ReferenceCommand::Kind::Parameter;
        line >> command.parameter >> command.value;
    } else {
        throw std::runtime_error("unknown command " + word);
    }
    if (!line) throw std::runtime_error("bad arguments of " + word);
    return command;
}

/// A host that knows a tempo and nothing else. The tempo belongs to the case being played.
double hostTempo = 0.0;

std::intptr_t TempoHost(AEffect*, std::int32_t opcode, std::int32_t, std::intptr_t, void*, float) {
    static VstTimeInfo time{};
    if (opcode != HostOp::GetTime || hostTempo == 0.0) return 0;
    time.tempo = hostTempo;
    time.flags = TimeFlag::TempoValid;
    return reinterpret_cast<std::intptr_t>(&time);
}

void SendMidi(AEffect* effect, const ReferenceCommand& command) {
    VstMidiEvent event{};
    event.type = kMidiEvent;
    event.byteSize = sizeof event;
    event.deltaFrames = command.offset;
    std::copy_n(command.message, 3, event.midiData);
    VstEvents events{};
    events.numEvents = 1;
    events.events[0] = reinterpret_cast<VstEvent*>(&event);
    effect->dispatcher(effect, PlugOp::ProcessEvents, 0, 0, &events, 0.0F);
}

void Carry(AEffect* effect, const ReferenceCommand& command) {
    switch (command.kind) {
    case ReferenceCommand::Kind::State: {
        std::vector<char> chunk = command.chunk;
        effect->dispatcher(effect, PlugOp::SetChunk, 1, static_cast<std::intptr_t>(chunk.size()),
                           chunk.data(), 0.0F);
        break;
    }
    case ReferenceCommand::Kind::Midi:
        SendMidi(effect, command);
        break;
    case ReferenceCommand::Kind::Parameter:
        effect->setParameter(effect, command.parameter, command.value);
        break;
    }
}

} // namespace

std::vector<std::string> ReferenceCaseNames(const std::filesystem::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() == ".txt") names.push_back(entry.path().stem().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

ReferenceCase LoadReferenceCase(const std::filesystem::path& folder, const std::string& name) {
    ReferenceCase reference;
    std::ifstream script(folder / (name + ".txt"));
    if (!script) throw std::runtime_error("no reference case " + name);
    for (std::string text; std::getline(script, text);) {
        std::istringstream line(text);
        std::string word;
        if (!(line >> word)) continue;
        if (word == "rate") {
            line >> reference.rate;
        } else if (word == "block") {
            line >> reference.blockSize;
        } else if (word == "tempo") {
            line >> reference.tempo;
        } else if (word == "blocks") {
            line >> reference.blocks;
        } else {
            reference.commands.push_back(ParseCommand(word, line, folder));
        }
    }
    const std::vector<char> bytes = ReadFile(folder / (name + ".f64"));
    reference.expected.resize(bytes.size() / sizeof(double));
    std::copy_n(bytes.data(), reference.expected.size() * sizeof(double),
                reinterpret_cast<char*>(reference.expected.data()));
    const auto frames =
        static_cast<std::size_t>(reference.blocks) * static_cast<std::size_t>(reference.blockSize);
    if (reference.expected.size() != 2 * (frames - kFirstFrame)) {
        throw std::runtime_error("figures of another length in " + name);
    }
    return reference;
}

std::vector<double> PlayReferenceCase(const ReferenceCase& reference, PluginMainFunction make) {
    hostTempo = reference.tempo;
    AEffect* effect = make(TempoHost);
    effect->dispatcher(effect, PlugOp::Open, 0, 0, nullptr, 0.0F);
    effect->dispatcher(effect, PlugOp::SetSampleRate, 0, 0, nullptr, static_cast<float>(reference.rate));
    effect->dispatcher(effect, PlugOp::SetBlockSize, 0, reference.blockSize, nullptr, 0.0F);
    effect->dispatcher(effect, PlugOp::MainsChanged, 0, 1, nullptr, 0.0F);

    const auto size = static_cast<std::size_t>(reference.blockSize);
    std::vector<double> left(size);
    std::vector<double> right(size);
    double* outputs[] = {left.data(), right.data()};
    std::vector<double> rendered;
    for (int block = 0; block < reference.blocks; ++block) {
        for (const ReferenceCommand& command : reference.commands) {
            if (command.block == block) Carry(effect, command);
        }
        effect->processDoubleReplacing(effect, nullptr, outputs, reference.blockSize);
        for (std::size_t i = 0; i < size; ++i) {
            rendered.push_back(left[i]);
            rendered.push_back(right[i]);
        }
    }
    effect->dispatcher(effect, PlugOp::Close, 0, 0, nullptr, 0.0F);
    return rendered;
}

double WorstDifference(const ReferenceCase& reference, const std::vector<double>& rendered) {
    double worst = 0.0;
    for (std::size_t i = 0; i < reference.expected.size(); ++i) {
        const double difference =
            std::fabs(rendered[2 * static_cast<std::size_t>(kFirstFrame) + i] - reference.expected[i]);
        if (std::isnan(difference)) return std::numeric_limits<double>::quiet_NaN();
        worst = std::max(worst, difference);
    }
    return worst;
}

} // namespace Grimworks::Testing

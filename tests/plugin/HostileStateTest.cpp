#include "tests/plugin/HostileModel.h"
#include "tests/plugin/Instrument.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <random>
#include <set>

namespace Grimworks::Testing {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kStateSize = 5372;

Bytes Cut(const Bytes& bytes, std::size_t length) {
    return {bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(length)};
}

/// Lengths near a border, as far as there are any.
void AddAround(std::set<std::size_t>& lengths, std::size_t border, std::size_t reach, std::size_t last) {
    for (std::size_t at = border - std::min(border, reach); at <= std::min(border + reach, last); ++at)
        lengths.insert(at);
}

std::vector<std::string> Names(const std::string& start) {
    std::vector<std::string> names;
    names.reserve(128);
    for (int i = 0; i < 128; ++i)
        names.push_back(start + std::to_string(i));
    return names;
}

/// Three sounds that take turns, so that what a cut sound brought is told from what was there before.
struct Turns {
    explicit Turns(unsigned seed)
        : sounds{Sound::Random(seed), Sound::Random(seed + 1), Sound::Random(seed + 2)} {}

    [[nodiscard]] const Sound& At(std::size_t turn) const { return sounds[turn % sounds.size()]; }

    std::array<Sound, 3> sounds;
};

} // namespace

TEST(HostileState, EveryLengthOfAStateLoadsAsFarAsItGoes) {
    Instrument instrument;
    HostileModel model(instrument.Plug());
    const Turns turns(1);
    for (std::size_t length = 0; length <= kStateSize; ++length) {
        const Bytes cut = Cut(turns.At(length).Chunk(), length);
        const bool taken = model.TakeChunk(false, cut);
        EXPECT_EQ(taken, length == kStateSize);
        ASSERT_EQ(SetChunk(instrument.Plug(), false, cut), taken) << length;
        ASSERT_EQ(model.Difference(length % 97 == 0), "") << length;
    }
    EXPECT_GE(model.ExactComparisons(), 5372);
}

TEST(HostileState, EveryLengthOfAStateWithItsHeaderLoadsAsFarAsItGoes) {
    Instrument instrument;
    HostileModel model(instrument.Plug());
    const Turns turns(4);
    for (std::size_t length = 0; length <= kStateSize + 8; ++length) {
        // A host may ask for a bank, too: cut down to less than a header it is read as a state.
        const bool bank = length < 8;
        const Bytes cut = Cut(WithHeader(turns.At(length).Chunk()), length);
        const bool taken = model.TakeChunk(bank, cut);
        EXPECT_EQ(taken, length == kStateSize + 8);
        ASSERT_EQ(SetChunk(instrument.Plug(), bank, cut), taken) << length;
        ASSERT_EQ(model.Difference(length % 97 == 0), "") << length;
    }
    EXPECT_GE(model.ExactComparisons(), 5380);
}

TEST(HostileState, ABankWithFewSoundsLoadsAsFarAsItGoes) {
    // Every length of the first preset, those near every border of the rest, and one in 53 between.
    Instrument instrument;
    HostileModel model(instrument.Plug());
    std::array<Bytes, 2> banks;
    std::set<std::size_t> lengths;
    for (unsigned i = 0; i < 2; ++i) {
        std::vector<std::optional<Sound>> sounds(128);
        for (const std::size_t used : {0U, 5U, 127U})
            sounds[used] = Sound::Random(10 + 3 * i + static_cast<unsigned>(used));
        const std::vector<std::string> names = Names(i == 0 ? "one " : "two ");
        banks[i] = WithHeader(BankChunk(names, sounds));
        if (i != 0) continue;
        std::size_t at = 8;
        for (std::size_t preset = 0; preset < 128; ++preset) {
            AddAround(lengths, at, 5, banks[0].size());
            AddAround(lengths, at + 4 + names[preset].size(), 2, banks[0].size());
            at += 4 + names[preset].size() + 1;
            if (!sounds[preset].has_value()) continue;
            for (const std::size_t border : {std::size_t{4}, std::size_t{4100}, kStateSize})
                AddAround(lengths, at + border, 9, banks[0].size());
            at += kStateSize;
        }
        ASSERT_EQ(at, banks[0].size());
    }
    for (std::size_t length = 0; length <= banks[0].size(); ++length) {
        if (length <= 8 + 4 + 5 + 1 + kStateSize || length % 53 == 0) lengths.insert(length);
    }
    for (const std::size_t length : lengths) {
        const Bytes cut = Cut(banks[length % 2], length);
        const bool taken = model.TakeChunk(true, cut);
        EXPECT_EQ(taken, length == banks[0].size());
        ASSERT_EQ(SetChunk(instrument.Plug(), true, cut), taken) << length;
        ASSERT_EQ(model.Difference(length % 31 == 0), "") << length;
    }
    EXPECT_EQ(model.ExactComparisons(), static_cast<int>(lengths.size()));
}

TEST(HostileState, AFullBankLoadsAsFarAsItGoes) {
    // 128 sounds of 5372 bytes are too many for all lengths: those near the borders of five presets are
    // taken, and one in 20011.
    Instrument instrument;
    ASSERT_TRUE(instrument.Plug().RestorePreset(64));
    HostileModel model(instrument.Plug());
    std::vector<std::optional<Sound>> sounds(128);
    for (unsigned i = 0; i < 128; ++i)
        sounds[i] = Sound::Random(100 + i);
    const std::vector<std::string> names = Names("full ");
    const Bytes bank = WithHeader(BankChunk(names, sounds));
    std::set<std::size_t> lengths;
    std::size_t at = 8;
    for (std::size_t preset = 0; preset < 128; ++preset) {
        const std::size_t state = at + 4 + names[preset].size() + 1;
        if (preset < 2 || preset == 64 || preset > 125) {
            for (const std::size_t border : {at, at + 4, state - 1, state, state + 4, state + 4100})
                AddAround(lengths, border, 1, bank.size());
        }
        at = state + kStateSize;
    }
    ASSERT_EQ(at, bank.size());
    for (std::size_t length = 20011; length < bank.size(); length += 20011)
        lengths.insert(length);
    lengths.insert(bank.size());
    for (const std::size_t length : lengths) {
        const Bytes cut = Cut(bank, length);
        const bool taken = model.TakeChunk(true, cut);
        EXPECT_EQ(taken, length == bank.size());
        ASSERT_EQ(SetChunk(instrument.Plug(), true, cut), taken) << length;
        ASSERT_EQ(model.Difference(true), "") << length;
    }
    EXPECT_EQ(model.ExactComparisons(), static_cast<int>(lengths.size()));
}

TEST(HostileState, EveryLengthOfAChunkFileIsRefusedOrLoadsAsFarAsItGoes) {
    Instrument instrument;
    HostileModel model(instrument.Plug());
    const Turns turns(20);
    for (std::size_t length = 0; length <= 68 + kStateSize; ++length) {
        const Bytes whole = ChunkFile("File " + std::to_string(length), WithHeader(turns.At(length).Chunk()));
        ASSERT_EQ(whole.size(), 5440U);
        const Bytes cut = Cut(whole, length);
        const bool taken = model.TakeFile(cut);
        EXPECT_EQ(taken, length >= 60);
        ASSERT_EQ(TakeProgramFile(instrument.Plug(), cut), taken) << length;
        ASSERT_EQ(model.Difference(length < 80 || length % 97 == 0), "") << length;
    }
    EXPECT_EQ(model.ExactComparisons(), 5441);
}

TEST(HostileState, EveryLengthOfAParameterFileIsRefusedOrRepeatsItsLastValue) {
    Instrument instrument;
    HostileModel model(instrument.Plug());
    // Repeated to the end, a value would turn on the locks of the LFOs; a 0 at the cut leaves them off.
    for (std::size_t length = 0; length <= 56 + 4 * std::size_t{kParameters}; ++length) {
        for (const bool endsInZero : {false, true}) {
            const Sound sound = Sound::Random(static_cast<unsigned>(30 + length % 3));
            std::vector<float> values(kParameters);
            std::transform(sound.values.begin(), sound.values.end(), values.begin(),
                           [](double value) { return static_cast<float>(value); });
            if (endsInZero && length >= 60) values[(length - 60) / 4] = 0.0F;
            const Bytes cut = Cut(ParameterFile("File " + std::to_string(length), values), length);
            const bool taken = model.TakeFile(cut);
            EXPECT_EQ(taken, length >= 56);
            ASSERT_EQ(TakeProgramFile(instrument.Plug(), cut), taken) << length;
            ASSERT_EQ(model.Difference(length < 80 || length % 31 == 0), "") << length;
            const Bytes calm = Sound::Random(40).Chunk();
            ASSERT_EQ(SetChunk(instrument.Plug(), false, calm), model.TakeChunk(false, calm));
            ASSERT_EQ(model.Difference(false), "") << length;
        }
    }
    EXPECT_GE(model.ExactComparisons(), 2 * 693);
}

TEST(HostileState, EveryLengthOfATextProgramLoadsItsWholeLines) {
    // All lengths of the first thousand characters and near the places where a line begins to count, and one
    // in 29 between.
    Instrument instrument;
    ThudForge& plug = instrument.Plug();
    const fs::path path = fs::path(testing::TempDir()) /
                          ("thudforge-hostile-" + std::to_string(std::random_device{}()) + ".txt");
    std::array<std::string, 2> texts;
    for (unsigned i = 0; i < 2; ++i) {
        Sound sound = Sound::Random(50 + i);
        sound.values[Param::DistortionType] = (9 + 5 * i) / 41.0;
        ASSERT_TRUE(SetChunk(plug, false, sound.Chunk()));
        ASSERT_TRUE(plug.SaveProgramAsText(path.string()));
        std::ifstream file(path, std::ios::binary);
        texts[i].assign(std::istreambuf_iterator<char>(file), {});
    }
    HostileModel model(plug);
    std::set<std::size_t> lengths;
    const std::size_t last = std::min(texts[0].size(), texts[1].size());
    for (std::size_t at = 0; at <= last; ++at) {
        if (at < 1000 || at % (at < 20000 ? 29 : 1009) == 0) lengths.insert(at);
        if (at < last && texts[0][at] == ';') AddAround(lengths, at + 1, 1, last);
    }
    for (const std::size_t length : lengths) {
        const std::string cut = texts[length % 2].substr(0, length);
        std::ofstream(path, std::ios::binary) << cut;
        model.TakeText(cut);
        ASSERT_TRUE(plug.LoadProgramFromText(path.string())) << length;
        ASSERT_EQ(model.Difference(length % 31 == 0), "") << length;
    }
    fs::remove(path);
    EXPECT_GE(model.ExactComparisons(), static_cast<int>(lengths.size() * 3 / 4));
}

} // namespace Grimworks::Testing

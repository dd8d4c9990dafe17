#include "tests/plugin/HostileModel.h"
#include "tests/plugin/Instrument.h"
#include "tests/support/SlowBuild.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <limits>
#include <random>

namespace Grimworks::Testing {
namespace {

namespace fs = std::filesystem;

constexpr int kBatch = 1000;

/// A sanitizer's build tries a quarter of the mutations; the plain one tries all of them.
constexpr int Rounds(int all) {
    return kSlowBuild ? all / 4 : all;
}
constexpr int kExactShare =
    20; ///< at least one round in so many compares every byte, the others all but locked rates
constexpr double kCeiling = 3.1622777;

/// Spoils bytes in the ways in which files are spoilt, the same way in every run.
class Mutator {
public:
    explicit Mutator(unsigned seed) : random(seed) {}

    std::size_t Below(std::size_t n) { return random() % n; }

    void Spoil(Bytes& bytes) {
        for (std::size_t i = Below(6) + 1; i > 0 && !bytes.empty(); --i)
            SpoilOnce(bytes);
    }

    void Spoil(std::string& text) {
        for (std::size_t i = Below(8) + 1; i > 0 && !text.empty(); --i)
            SpoilOnce(text);
    }

private:
    /// Headers and length fields are hit more often than their share.
    std::size_t Place(const Bytes& bytes) {
        const std::size_t reach = Below(3) == 0 ? std::min<std::size_t>(bytes.size(), 80) : bytes.size();
        return Below(reach);
    }

    template <typename Container>
    static auto At(Container& c, std::size_t at) {
        return c.begin() + static_cast<std::ptrdiff_t>(at);
    }

    template <typename Container>
    void Splice(Container& c) {
        const std::size_t from = Below(c.size());
        const Container piece(At(c, from), At(c, from + Below(std::min<std::size_t>(c.size() - from, 600))));
        const std::size_t to = Below(c.size());
        if (Below(2) == 0) {
            std::copy_n(piece.begin(), std::min(piece.size(), c.size() - to), At(c, to));
        } else {
            c.insert(At(c, to), piece.begin(), piece.end());
        }
    }

    template <typename Container>
    void Remove(Container& c, std::size_t most) {
        const std::size_t from = Below(c.size());
        c.erase(At(c, from), At(c, from + Below(std::min(c.size() - from, most))));
    }

    template <typename T>
    void Overwrite(Bytes& bytes, T number, std::size_t at) {
        std::memcpy(bytes.data() + at, &number, std::min(sizeof number, bytes.size() - at));
    }

    void SpoilOnce(Bytes& bytes) {
        static constexpr std::int32_t kLengths[] = {0,    1,   -1,  159, 158,  671,        4096,
                                                    5372, 255, 256, 300, 1000, 0x7fffffff, -0x7fffffff};
        static constexpr std::uint64_t kDoubles[] = {
            0x7ff8000000000000, 0xfff8000000000001, 0x7ff0000000000001, 0x7ff0000000000000,
            0xfff0000000000000, 0x7fefffffffffffff, 0xffefffffffffffff, 0x0000000000000001,
            0x8000000000000000, 0x3ff0000000000001, 0xbff0000000000000, 0x4059000000000000};
        static constexpr std::uint32_t kFloats[] = {0x0000c07f, 0x0000807f, 0x000080ff, 0xffff7f7f,
                                                    0xffff7fff, 0x01000000, 0x00000080, 0x0100807f};
        switch (Below(10)) {
        case 0:
            bytes[Place(bytes)] ^= static_cast<std::uint8_t>(1U << Below(8));
            break;
        case 1:
            bytes[Place(bytes)] = static_cast<std::uint8_t>(Below(256));
            break;
        case 2:
            Splice(bytes);
            break;
        case 3:
            Remove(bytes, 600);
            break;
        case 4:
            if (Below(4) == 0) bytes.resize(Below(bytes.size()) + 1);
            break;
        case 5:
            Overwrite(bytes, kLengths[Below(std::size(kLengths))], Place(bytes));
            break;
        case 6: // a float of the parameter form, which stands the other way round
            Overwrite(bytes, kFloats[Below(std::size(kFloats))], Place(bytes) & ~std::size_t{3});
            break;
        default: // doubles of a state, with or without its headers
            for (std::size_t i = Below(12); i > 0; --i) {
                const std::size_t at = (Place(bytes) & ~std::size_t{7}) + 4;
                if (at < bytes.size()) Overwrite(bytes, kDoubles[Below(std::size(kDoubles))], at);
            }
            break;
        }
    }

    void SpoilOnce(std::string& text) {
        static const std::string kPieces[] = {"nan",     "-inf",      "INFINITY", "1e999",
                                              "-1e-999", "0x1p-1",    "0x",       "+",
                                              "-",       ".5",        "5.",       "1e",
                                              "1e+",     "1,5",       ";",        "=",
                                              " = ",     ";\n",       "\n",       "\r\n",
                                              "\n\n",    ";;",        "==",       "Name = ",
                                              "= x;\n",  "Triangle",  "Limiter",  "RBJ-HP",
                                              "HP 24dB", "nan(7)",    " \t0.25",  std::string(1, '\0'),
                                              "\xff",    "\xc3\x28;", "2",        "0.",
                                              "9e9",     "--1",       "infinit",  "DistortionCurveData = ",
                                              "1e5000",  "0x.8",      "1_0",      "0.5;1",
                                              "Gate",    "\v1",       "000000.7", "1e-400"};
        const std::size_t at = Below(text.size());
        switch (Below(6)) {
        case 0:
            text[at] = "0123456789.,;=\n-einfax"[Below(22)];
            break;
        case 1:
            text[at] = static_cast<char>(Below(256));
            break;
        case 2:
            Splice(text);
            break;
        case 3:
            Remove(text, 60);
            break;
        case 4: { // another value for some key
            const std::size_t equals = text.find(" = ", at);
            if (equals == std::string::npos) break;
            const std::size_t end = text.find(';', equals);
            if (end == std::string::npos) break;
            text.replace(equals + 3, end - equals - 3, kPieces[Below(std::size(kPieces))]);
            break;
        }
        default:
            text.insert(at, kPieces[Below(std::size(kPieces))]);
            break;
        }
    }

    std::mt19937 random;
};

Sound SoundOfProgram(Instrument& instrument, int number) {
    Sound sound;
    const auto bytes = instrument.Plug().GetPreset(number)->chunk.Bytes();
    sound.Read({bytes.begin(), bytes.end()}, 0);
    return sound;
}

Instrument::Audio PlayNote(Instrument& instrument) {
    instrument.NoteOn(45);
    Instrument::Audio audio = instrument.Render(1024);
    instrument.NoteOff(45);
    return audio;
}

bool IsSound(const Instrument::Audio& audio) {
    const auto good = [](double x) { return std::fabs(x) <= kCeiling; };
    return std::all_of(audio.left.begin(), audio.left.end(), good) &&
           std::all_of(audio.right.begin(), audio.right.end(), good);
}

/// A batch that takes and compares, and then plays: what came in last, and after it a program as it left the
/// factory, which must sound whatever went before.
class Session {
public:
    Session() : model(instrument.Plug()), healthy(SoundOfProgram(instrument, 5).Chunk()) {}

    template <typename Take>
    void Run(int rounds, Take take) {
        for (int round = 0; round < rounds; ++round) {
            take();
            ASSERT_EQ(model.Difference(round % 50 == 0), "") << "round " << round;
            // Locks and links that came in would blur the next comparison.
            if (!model.Live().IsUnlocked()) {
                ASSERT_NO_FATAL_FAILURE(Heal());
            }
            if ((round + 1) % kBatch != 0) continue;
            ASSERT_NO_FATAL_FAILURE(Play(round));
        }
        EXPECT_GT(model.ExactComparisons(), rounds / kExactShare);
        EXPECT_GT(tame, 0);
    }

    Instrument instrument;
    HostileModel model;

private:
    void Heal() {
        ASSERT_EQ(SetChunk(instrument.Plug(), false, healthy), model.TakeChunk(false, healthy));
        ASSERT_EQ(model.Difference(false), "");
    }

    void Play(int round) {
        // A curve of absurd points may give absurd sound, but only as long as it is there.
        const Instrument::Audio wild = PlayNote(instrument);
        if (model.Live().HasTameCurve()) {
            ASSERT_TRUE(IsSound(wild)) << "round " << round;
            ++tame;
        }
        ASSERT_NO_FATAL_FAILURE(Heal());
        instrument.Render(256);
        const Instrument::Audio audio = PlayNote(instrument);
        ASSERT_TRUE(IsSound(audio)) << "round " << round;
        ASSERT_GT(audio.Peak(), 0.01) << "round " << round;
    }

    Bytes healthy;
    int tame = 0;
};

} // namespace

TEST(HostileMutations, States) {
    Session session;
    Mutator mutator(1);
    unsigned seed = 0;
    session.Run(Rounds(40000), [&] {
        Bytes bytes = Sound::Random(++seed % 64).Chunk();
        if (mutator.Below(2) == 0) bytes = WithHeader(bytes);
        mutator.Spoil(bytes);
        const bool bank = mutator.Below(16) == 0;
        const bool taken = session.model.TakeChunk(bank, bytes);
        ASSERT_EQ(SetChunk(session.instrument.Plug(), bank, bytes), taken) << seed;
    });
}

TEST(HostileMutations, Banks) {
    Session session;
    Mutator mutator(2);
    unsigned seed = 0;
    session.Run(Rounds(10000), [&] {
        // Few sounds, so that most of the bytes are lengths, names and flags.
        const std::size_t count = mutator.Below(10) == 0 ? 100 : 128;
        std::vector<std::string> names(count);
        for (std::string& name : names)
            name.assign(mutator.Below(40) * mutator.Below(10), static_cast<char>('a' + mutator.Below(26)));
        std::vector<std::optional<Sound>> sounds(count);
        for (int i = 0; i < 3; ++i)
            sounds[mutator.Below(count)] = Sound::Random(++seed % 64);
        Bytes bytes = WithHeader(BankChunk(names, sounds));
        mutator.Spoil(bytes);
        const bool taken = session.model.TakeChunk(true, bytes);
        ASSERT_EQ(SetChunk(session.instrument.Plug(), true, bytes), taken) << seed;
    });
}

TEST(HostileMutations, ChunkFiles) {
    Session session;
    Mutator mutator(3);
    unsigned seed = 0;
    session.Run(Rounds(20000), [&] {
        const Bytes state = Sound::Random(++seed % 64).Chunk();
        const std::string name = "File " + std::to_string(seed);
        Bytes bytes = ChunkFile(name, mutator.Below(4) == 0 ? state : WithHeader(state));
        mutator.Spoil(bytes);
        const bool taken = session.model.TakeFile(bytes);
        ASSERT_EQ(TakeProgramFile(session.instrument.Plug(), bytes), taken) << seed;
    });
}

TEST(HostileMutations, ParameterFiles) {
    Session session;
    Mutator mutator(4);
    unsigned seed = 0;
    session.Run(Rounds(20000), [&] {
        const Sound sound = Sound::Random(++seed % 64);
        std::vector<float> values(kParameters);
        std::transform(sound.values.begin(), sound.values.end(), values.begin(),
                       [](double value) { return static_cast<float>(value); });
        Bytes bytes = ParameterFile("File " + std::to_string(seed), values);
        mutator.Spoil(bytes);
        const bool taken = session.model.TakeFile(bytes);
        ASSERT_EQ(TakeProgramFile(session.instrument.Plug(), bytes), taken) << seed;
    });
}

TEST(HostileMutations, TextPrograms) {
    Session session;
    Mutator mutator(5);
    ThudForge& plug = session.instrument.Plug();
    const fs::path path = fs::path(testing::TempDir()) /
                          ("thudforge-mutated-" + std::to_string(std::random_device{}()) + ".txt");
    std::vector<std::string> texts;
    for (const int program : {0, 5, 36, 72, 104}) {
        ASSERT_TRUE(plug.RestorePreset(program));
        ASSERT_TRUE(plug.SaveProgramAsText(path.string()));
        std::ifstream file(path, std::ios::binary);
        std::string text(std::istreambuf_iterator<char>(file), {});
        texts.push_back(text.substr(0, text.find("OscWaveData")));
    }
    session.model = HostileModel(plug);
    std::size_t round = 0;
    session.Run(Rounds(10000), [&] {
        std::string text = texts[++round % texts.size()];
        mutator.Spoil(text);
        std::ofstream(path, std::ios::binary) << text;
        session.model.TakeText(text);
        ASSERT_TRUE(plug.LoadProgramFromText(path.string())) << round;
    });
    fs::remove(path);
}

} // namespace Grimworks::Testing

#include "host/MidiFile.h"

#include "host/Files.h"
#include "host/HostError.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace Grimworks {

namespace {

constexpr int kMetaEndOfTrack = 0x2F;
constexpr int kMetaTempo = 0x51;
constexpr int kMetaTimeSignature = 0x58;
constexpr int kMaxDenominatorPower = 6;

/// One thing that happens at a tick: a channel message, a tempo or a time signature.
struct TickEvent {
    enum class Kind : std::uint8_t { Message, Tempo, Meter };

    std::int64_t tick;
    Kind kind;
    std::array<std::uint8_t, 3> bytes;
};

/// Reads numbers off a stretch of bytes and complains, with the position in the file, when it ends too soon.
class ByteReader {
public:
    ByteReader(std::span<const std::uint8_t> stretch, std::size_t positionInFile, const std::string& fileName)
        : bytes(stretch), start(positionInFile), name(fileName) {}

    [[nodiscard]] bool AtEnd() const { return position == bytes.size(); }
    [[nodiscard]] std::size_t Left() const { return bytes.size() - position; }

    [[noreturn]] void Fail(const std::string& fault) const {
        throw HostError(name + ": " + fault + " at byte " + std::to_string(start + position));
    }

    std::uint8_t Peek() const {
        if (AtEnd()) Fail("is truncated");
        return bytes[position];
    }

    std::uint8_t Byte() {
        const std::uint8_t byte = Peek();
        ++position;
        return byte;
    }

    /// Big-endian number of `count` bytes, at most 4.
    std::uint32_t Number(int count) {
        std::uint32_t number = 0;
        for (int i = 0; i < count; ++i)
            number = number << 8U | Byte();
        return number;
    }

    /// Seven bits a byte, the last one without the top bit; at most four bytes.
    std::uint32_t VariableNumber() {
        std::uint32_t number = 0;
        for (int i = 0; i < 4; ++i) {
            const std::uint8_t byte = Byte();
            number = number << 7U | (byte & 0x7FU);
            if (byte < 0x80) return number;
        }
        Fail("has a number of more than four bytes");
    }

    /// The next `count` bytes as a reader of their own.
    ByteReader Stretch(std::size_t count) {
        if (count > Left()) Fail("is truncated");
        ByteReader part(bytes.subspan(position, count), start + position, name);
        position += count;
        return part;
    }

private:
    std::span<const std::uint8_t> bytes;
    std::size_t start;
    const std::string& name;
    std::size_t position = 0;
};

/// How many ticks make a second or a quarter note.
struct Division {
    bool byFrames = false;
    double ticksPerSecond = 0.0;  ///< film frames only
    double ticksPerQuarter = 0.0; ///< otherwise
};

Division ReadDivision(ByteReader& header) {
    const std::uint32_t word = header.Number(2);
    Division division;
    if ((word & 0x8000U) == 0) {
        division.ticksPerQuarter = word;
        if (word == 0) header.Fail("has no ticks in a quarter note");
        return division;
    }
    division.byFrames = true;
    const int framesPerSecond = 256 - static_cast<int>(word >> 8U);
    const int ticksPerFrame = static_cast<int>(word & 0xFFU);
    if (ticksPerFrame == 0) header.Fail("has no ticks in a film frame");
    switch (framesPerSecond) {
    case 24:
    case 25:
    case 30:
        division.ticksPerSecond = static_cast<double>(framesPerSecond) * ticksPerFrame;
        break;
    case 29:
        division.ticksPerSecond = 30000.0 / 1001.0 * ticksPerFrame;
        break;
    default:
        header.Fail("has an unknown film frame rate");
    }
    return division;
}

/// Reads one track into a list that all tracks share.
class TrackReader {
public:
    TrackReader(ByteReader& trackBytes, std::vector<TickEvent>& allEvents)
        : bytes(trackBytes), events(allEvents) {}

    /// Returns the tick at which the track ends.
    std::int64_t Read() {
        while (!ended && !bytes.AtEnd()) {
            tick += bytes.VariableNumber();
            ReadEvent();
        }
        return tick;
    }

private:
    void ReadEvent() {
        const std::uint8_t first = bytes.Peek();
        if (first < 0x80) {
            if (runningStatus == 0) bytes.Fail("has data without a status");
            ReadMessage(runningStatus);
            return;
        }
        bytes.Byte();
        if (first < 0xF0) {
            runningStatus = first;
            ReadMessage(first);
            return;
        }
        runningStatus = 0;
        if (first == 0xFF) {
            ReadMeta();
        } else if (first == 0xF0 || first == 0xF7) {
            const std::uint32_t length = bytes.VariableNumber();
            bytes.Stretch(length);
        } else {
            bytes.Fail("has a status that does not belong in a file");
        }
    }

    void ReadMessage(std::uint8_t status) {
        const int kind = status >> 4;
        const bool oneDataByte = kind == 0xC || kind == 0xD;
        const std::uint8_t data1 = DataByte();
        const std::uint8_t data2 = oneDataByte ? std::uint8_t{0} : DataByte();
        events.push_back({tick, TickEvent::Kind::Message, {status, data1, data2}});
    }

    std::uint8_t DataByte() {
        if (bytes.Peek() >= 0x80) bytes.Fail("has a status where data belongs");
        return bytes.Byte();
    }

    void ReadMeta() {
        const std::uint8_t type = bytes.Byte();
        const std::uint32_t length = bytes.VariableNumber();
        ByteReader content = bytes.Stretch(length);
        if (type == kMetaEndOfTrack) {
            ended = true;
        } else if (type == kMetaTempo && length >= 3) {
            AddMeta(TickEvent::Kind::Tempo, content);
        } else if (type == kMetaTimeSignature && length >= 2) {
            AddMeta(TickEvent::Kind::Meter, content);
        }
    }

    void AddMeta(TickEvent::Kind kind, ByteReader& content) {
        const std::uint8_t first = content.Byte();
        const std::uint8_t second = content.Byte();
        const std::uint8_t third = content.AtEnd() ? std::uint8_t{0} : content.Byte();
        events.push_back({tick, kind, {first, second, third}});
    }

    ByteReader& bytes;
    std::vector<TickEvent>& events;
    std::int64_t tick = 0;
    std::uint8_t runningStatus = 0;
    bool ended = false;
};

/// Turns ticks into seconds, following the tempo as it goes.
class Clock {
public:
    explicit Clock(const Division& fileDivision) : division(fileDivision) {}

    /// Seconds of a tick that is not before any tick asked for so far.
    double Seconds(std::int64_t tick) const {
        const auto ticks = static_cast<double>(tick - tempoTick);
        if (division.byFrames) return ticks / division.ticksPerSecond;
        return tempoSeconds + ticks * microseconds / (1e6 * division.ticksPerQuarter);
    }

    void SetTempo(std::int64_t tick, double microsecondsPerQuarter) {
        if (division.byFrames) return;
        tempoSeconds = Seconds(tick);
        tempoTick = tick;
        microseconds = microsecondsPerQuarter;
    }

private:
    Division division;
    std::int64_t tempoTick = 0;
    double tempoSeconds = 0.0;
    double microseconds = 500000.0;
};

void AddTempo(Song& song, Clock& clock, const TickEvent& event) {
    const int microseconds = event.bytes[0] << 16 | event.bytes[1] << 8 | event.bytes[2];
    if (microseconds == 0) return;
    song.tempo.AddTempo(clock.Seconds(event.tick), microseconds);
    clock.SetTempo(event.tick, microseconds);
}

void AddMeter(Song& song, const Clock& clock, const TickEvent& event) {
    if (event.bytes[0] == 0 || event.bytes[1] > kMaxDenominatorPower) return;
    song.tempo.AddMeter(song.tempo.QuarterAt(clock.Seconds(event.tick)), event.bytes[0], 1 << event.bytes[1]);
}

Song MakeSong(std::vector<TickEvent>& events, std::int64_t endTick, const Division& division) {
    std::stable_sort(events.begin(), events.end(),
                     [](const TickEvent& a, const TickEvent& b) { return a.tick < b.tick; });
    Song song;
    Clock clock(division);
    for (const TickEvent& event : events) {
        switch (event.kind) {
        case TickEvent::Kind::Tempo:
            AddTempo(song, clock, event);
            break;
        case TickEvent::Kind::Meter:
            AddMeter(song, clock, event);
            break;
        case TickEvent::Kind::Message:
            song.events.push_back({clock.Seconds(event.tick), event.bytes});
            break;
        }
    }
    song.seconds = clock.Seconds(endTick);
    return song;
}

/// Looks for the next chunk of the kind "MTrk", passing over kinds that it does not know.
ByteReader NextTrack(ByteReader& file) {
    for (;;) {
        const std::uint32_t kind = file.Number(4);
        const std::uint32_t length = file.Number(4);
        ByteReader chunk = file.Stretch(length);
        if (kind == 0x4D54726B) return chunk;
    }
}

bool HasHeader(std::span<const std::uint8_t> bytes) {
    constexpr std::string_view kHeader = "MThd";
    const auto same = [](char letter, std::uint8_t byte) {
        return static_cast<std::uint8_t>(letter) == byte;
    };
    return bytes.size() >= kHeader.size() && std::equal(kHeader.begin(), kHeader.end(), bytes.begin(), same);
}

} // namespace

Song MidiFile::Load(const std::filesystem::path& path) {
    return Parse(ReadFileBytes(path, kMaxBytes), TextFromPath(path));
}

Song MidiFile::Parse(std::span<const std::uint8_t> bytes, const std::string& name) {
    if (!HasHeader(bytes)) throw HostError(name + ": is not a Standard MIDI file");
    ByteReader file(bytes, 0, name);
    file.Number(4);
    const std::uint32_t headerLength = file.Number(4);
    ByteReader header = file.Stretch(headerLength);
    const std::uint32_t type = header.Number(2);
    const std::uint32_t tracks = header.Number(2);
    const Division division = ReadDivision(header);
    if (type > 1) throw HostError(name + ": is a MIDI file of type " + std::to_string(type) + ", not 0 or 1");
    if (tracks == 0) throw HostError(name + ": has no tracks");
    if (type == 0 && tracks > 1) throw HostError(name + ": is of type 0 but has more than one track");
    if (tracks > kMaxTracks) throw HostError(name + ": has too many tracks: " + std::to_string(tracks));

    std::vector<TickEvent> events;
    std::int64_t endTick = 0;
    for (std::uint32_t i = 0; i < tracks; ++i) {
        ByteReader track = NextTrack(file);
        endTick = std::max(endTick, TrackReader(track, events).Read());
    }
    Song song = MakeSong(events, endTick, division);
    if (song.seconds > kMaxSeconds) throw HostError(name + ": lasts longer than 24 hours");
    return song;
}

} // namespace Grimworks

#include "host/Render.h"

#include "host/HostError.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <vector>

namespace Grimworks {

namespace {

constexpr double kQuiet = 1e-5;
constexpr double kQuietSeconds = 4.5;
constexpr double kAfterSound = 0.1;
constexpr double kMaxTail = 60.0;

constexpr std::size_t kChannels = 16;
constexpr std::size_t kKeys = 128;
constexpr int kNoteOff = 0x8;
constexpr int kNoteOn = 0x9;

/// A message at its sample of the whole render.
struct FrameEvent {
    std::int64_t frame;
    std::array<std::uint8_t, 3> bytes;
};

std::int64_t FrameAt(double seconds, double rate) {
    return std::llround(seconds * rate);
}

std::vector<FrameEvent> Schedule(const Song& song, double rate) {
    std::vector<FrameEvent> events;
    events.reserve(song.events.size());
    std::array<bool, kChannels * kKeys> down{};
    for (const SongEvent& event : song.events) {
        events.push_back({FrameAt(event.seconds, rate), event.bytes});
        const int kind = event.bytes[0] >> 4;
        if (kind != kNoteOn && kind != kNoteOff) continue;
        const std::size_t key = (event.bytes[0] & 0x0FU) * kKeys + (event.bytes[1] & 0x7FU);
        down[key] = kind == kNoteOn && event.bytes[2] != 0;
    }
    for (std::size_t key = 0; key < down.size(); ++key) {
        if (!down[key]) continue;
        const auto status = static_cast<std::uint8_t>(kNoteOff << 4 | static_cast<int>(key / kKeys));
        events.push_back({FrameAt(song.seconds, rate), {status, static_cast<std::uint8_t>(key % kKeys), 0}});
    }
    return events;
}

/// Writes frames to a file and holds back those that are quiet, so that they can be dropped if nothing
/// follows.
class TailKeeper {
public:
    TailKeeper(WavWriter& file, int channels) : wav(file), channelCount(static_cast<std::size_t>(channels)) {}

    void Write(std::span<const double> interleaved) {
        wav.Write(interleaved);
        written += interleaved.size();
    }

    /// Takes frames of the tail: everything up to the last loud one is written, the rest is held.
    void Hold(std::span<const double> interleaved) {
        std::size_t loudEnd = 0;
        for (std::size_t i = 0; i < interleaved.size(); ++i) {
            if (std::abs(interleaved[i]) > kQuiet) loudEnd = (i / channelCount + 1) * channelCount;
        }
        if (loudEnd > 0) {
            Write(held);
            held.clear();
            Write(interleaved.first(loudEnd));
        }
        const auto rest = interleaved.subspan(loudEnd);
        held.insert(held.end(), rest.begin(), rest.end());
    }

    [[nodiscard]] std::int64_t HeldFrames() const { return Frames(held.size()); }
    [[nodiscard]] std::int64_t WrittenFrames() const { return Frames(written); }

    /// Writes the first of the frames that are held and forgets the others.
    void Release(std::int64_t frames) {
        const auto samples = std::min(held.size(), static_cast<std::size_t>(frames) * channelCount);
        Write(std::span<const double>(held).first(samples));
        held.clear();
    }

private:
    [[nodiscard]] std::int64_t Frames(std::size_t samples) const {
        return static_cast<std::int64_t>(samples / channelCount);
    }

    WavWriter& wav;
    std::size_t channelCount;
    std::size_t written = 0;
    std::vector<double> held;
};

/// One render on its way.
class Renderer {
public:
    Renderer(PluginHost& pluginHost, const Song& song, std::optional<double> tail, WavWriter& wav)
        : host(pluginHost), rate(pluginHost.Setup().sampleRate), events(Schedule(song, rate)),
          songFrames(FrameAt(song.seconds, rate)), automatic(!tail.has_value()),
          totalFrames(songFrames + FrameAt(tail.value_or(kMaxTail), rate)),
          keeper(wav, pluginHost.ChannelCount()) {}

    /// Without a tail of its own choosing the render may be as long as this.
    [[nodiscard]] std::int64_t MostFrames() const { return totalFrames; }

    RenderResult Run(const RenderProgress& progress) {
        const double expected = static_cast<double>(automatic ? songFrames : totalFrames) / rate;
        while (position < totalFrames && !Silent()) {
            RenderBlock();
            if (progress && !progress(static_cast<double>(position) / rate, expected)) {
                result.interrupted = true;
                break;
            }
        }
        if (automatic) keeper.Release(FrameAt(kAfterSound, rate));
        result.frames = keeper.WrittenFrames();
        return result;
    }

private:
    [[nodiscard]] bool Silent() const {
        return automatic && keeper.HeldFrames() >= FrameAt(kQuietSeconds, rate);
    }

    void RenderBlock() {
        const auto frames =
            static_cast<int>(std::min<std::int64_t>(host.Setup().blockSize, totalFrames - position));
        blockEvents.clear();
        for (; next < events.size() && events[next].frame < position + frames; ++next) {
            blockEvents.push_back({static_cast<int>(events[next].frame - position), events[next].bytes});
        }
        host.Process(position, blockEvents, frames);
        Interleave(frames);
        Store(frames);
        position += frames;
    }

    void Interleave(int frames) {
        const auto channels = static_cast<std::size_t>(host.ChannelCount());
        interleaved.resize(static_cast<std::size_t>(frames) * channels);
        for (std::size_t channel = 0; channel < channels; ++channel) {
            const auto output = host.Output(static_cast<int>(channel));
            for (std::size_t i = 0; i < static_cast<std::size_t>(frames); ++i) {
                const double sample = output[i];
                if (!std::isfinite(sample)) FailAt(static_cast<std::int64_t>(i));
                result.peak = std::max(result.peak, std::abs(sample));
                interleaved[i * channels + channel] = sample;
            }
        }
    }

    [[noreturn]] void FailAt(std::int64_t frame) const {
        throw HostError(host.ModuleName() + ": gives a sample that is no number at " +
                        std::to_string(static_cast<double>(position + frame) / rate) + " s");
    }

    void Store(int frames) {
        const std::span<const double> block(interleaved);
        if (!automatic) {
            keeper.Write(block);
            return;
        }
        const std::int64_t ofSong = std::clamp<std::int64_t>(songFrames - position, 0, frames);
        const auto samples = static_cast<std::size_t>(ofSong) * static_cast<std::size_t>(host.ChannelCount());
        keeper.Write(block.first(samples));
        keeper.Hold(block.subspan(samples));
    }

    PluginHost& host;
    double rate;
    std::vector<FrameEvent> events;
    std::int64_t songFrames;
    bool automatic;
    std::int64_t totalFrames;
    TailKeeper keeper;
    std::int64_t position = 0;
    std::size_t next = 0;
    std::vector<BlockEvent> blockEvents;
    std::vector<double> interleaved;
    RenderResult result;
};

/// Keeps the plug-in running and the song's tempo known for as long as the render takes.
class Playback {
public:
    Playback(PluginHost& pluginHost, const TempoMap& map) : host(pluginHost) {
        host.FollowTempo(&map);
        host.Activate(true);
    }
    ~Playback() {
        host.Activate(false);
        host.FollowTempo(nullptr);
    }
    Playback(const Playback&) = delete;
    Playback& operator=(const Playback&) = delete;

private:
    PluginHost& host;
};

} // namespace

RenderResult RenderSong(PluginHost& host, const Song& song, std::optional<double> tail, WavWriter& wav,
                        SampleFormat format, const RenderProgress& progress) {
    Renderer renderer(host, song, tail, wav);
    if (renderer.MostFrames() > WavWriter::MaxFrames(host.ChannelCount(), format)) {
        throw HostError(wav.Name() + ": a WAV file cannot hold " + std::to_string(renderer.MostFrames()) +
                        " frames");
    }
    const Playback playback(host, song.tempo);
    return renderer.Run(progress);
}

Song MakeNotes(const std::vector<int>& notes, int velocity, double seconds) {
    Song song;
    for (const int note : notes) {
        const auto key = static_cast<std::uint8_t>(note);
        song.events.push_back({song.seconds, {0x90, key, static_cast<std::uint8_t>(velocity)}});
        song.seconds += seconds;
        song.events.push_back({song.seconds, {0x80, key, 0}});
    }
    return song;
}

} // namespace Grimworks

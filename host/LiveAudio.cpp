#include "host/LiveAudio.h"

#include <array>
#include <chrono>

namespace Grimworks {

namespace {

constexpr std::uint8_t kNoteOff = 0x80;
constexpr std::uint8_t kNoteOn = 0x90;

} // namespace

std::vector<BlockEvent> KeyEvents(const RepeatedKey& key, std::int64_t position, int frames, int sampleRate) {
    std::vector<BlockEvent> events;
    const std::int64_t half = sampleRate / 2;
    const auto note = static_cast<std::uint8_t>(key.note);
    // Beats are counted in halves of a second: the even ones strike, the odd ones release.
    for (std::int64_t beat = (position + half - 1) / half; beat * half < position + frames; ++beat) {
        const auto offset = static_cast<int>(beat * half - position);
        const bool strikes = beat % 2 == 0;
        const auto velocity = static_cast<std::uint8_t>(strikes ? key.velocity : 0);
        events.push_back({offset, {strikes ? kNoteOn : kNoteOff, note, velocity}});
    }
    return events;
}

LiveAudio::LiveAudio(PluginHost& host, std::optional<RepeatedKey> key) : player(host), repeated(key) {
    player.Activate(true);
    thread = std::jthread([this](const std::stop_token& stop) { Run(stop); });
}

LiveAudio::~LiveAudio() {
    thread.request_stop();
    thread.join();
    player.Activate(false);
}

void LiveAudio::Run(const std::stop_token& stop) {
    using Clock = std::chrono::steady_clock;
    const int frames = player.Setup().blockSize;
    const auto sampleRate = static_cast<int>(player.Setup().sampleRate);
    const auto block = std::chrono::duration_cast<Clock::duration>(
        std::chrono::duration<double>(frames / player.Setup().sampleRate));
    auto due = Clock::now();
    for (std::int64_t position = 0; !stop.stop_requested(); position += frames) {
        const auto events =
            repeated ? KeyEvents(*repeated, position, frames, sampleRate) : std::vector<BlockEvent>();
        player.Process(position, events, frames);
        // What is late stays late: a machine that was asleep does not make up for it in a burst.
        due = std::max(due + block, Clock::now());
        std::this_thread::sleep_until(due);
    }
}

} // namespace Grimworks

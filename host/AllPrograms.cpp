#include "host/AllPrograms.h"

#include "host/Files.h"
#include "host/Render.h"
#include "host/Settings.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdio>
#include <exception>
#include <mutex>
#include <thread>

namespace Grimworks {

namespace {

/// The programs of one job on their way, shared by the threads that work on it.
class Workshop {
public:
    Workshop(const AllProgramsJob& work, int programs, const AllProgramsProgress& report)
        : job(work), total(programs), progress(report) {}

    void Run() {
        std::vector<std::thread> workers;
        const auto count = std::clamp(job.threads, 1U, static_cast<unsigned>(std::max(total, 1)));
        for (unsigned i = 1; i < count; ++i)
            workers.emplace_back([this] { Work(); });
        Work();
        for (std::thread& worker : workers)
            worker.join();
        if (fault) std::rethrow_exception(fault);
    }

    [[nodiscard]] AllProgramsResult Result() const { return {done, total, done < total}; }

private:
    void Work() {
        for (int program = next++; program < total && !stopped; program = next++) {
            try {
                if (!RenderOne(program)) stopped = true;
            } catch (...) {
                const std::lock_guard guard(lock);
                if (!fault) fault = std::current_exception();
                stopped = true;
            }
        }
    }

    /// False if it was stopped on the way.
    bool RenderOne(int program) {
        PluginHost host(job.entry, job.moduleName, job.setup);
        ChooseProgram(host, std::to_string(program + 1));
        for (const std::string& setting : job.settings)
            ApplySetting(host, setting);
        WavWriter wav(job.folder / PathFromText(ProgramFileName(program + 1, host.ProgramName(program))),
                      host.ChannelCount(), static_cast<int>(job.setup.sampleRate), job.format);
        const RenderResult result = RenderSong(host, *job.song, job.tail, wav, job.format,
                                               [this](double, double) { return !stopped && Report(0); });
        if (result.interrupted) return false;
        wav.Commit();
        return Report(1);
    }

    bool Report(int more) {
        const std::lock_guard guard(lock);
        done += more;
        return !progress || progress(done, total);
    }

    const AllProgramsJob& job;
    const int total;
    const AllProgramsProgress& progress;
    std::atomic<int> next{0};
    std::atomic<bool> stopped{false};
    std::mutex lock;
    int done = 0;
    std::exception_ptr fault;
};

} // namespace

AllProgramsResult RenderAllPrograms(const AllProgramsJob& job, const AllProgramsProgress& progress) {
    const int programs = PluginHost(job.entry, job.moduleName, job.setup).ProgramCount();
    Workshop workshop(job, programs, progress);
    workshop.Run();
    return workshop.Result();
}

std::string ProgramFileName(int number, std::string_view name) {
    constexpr std::string_view kForbidden = "<>:\"/\\|?*";
    std::array<char, 16> digits{};
    std::snprintf(digits.data(), digits.size(), "%03d", number);
    std::string file(digits.data());
    if (!name.empty()) file += ' ';
    for (const char letter : name) {
        const bool control = static_cast<unsigned char>(letter) < ' ';
        file += control || kForbidden.find(letter) != std::string_view::npos ? '_' : letter;
    }
    return file + ".wav";
}

} // namespace Grimworks

// Bytes of a Standard MIDI file.
#include "host/HostError.h"
#include "host/MidiFile.h"
#include "tests/fuzz/Check.h"

#include <string_view>

using namespace Grimworks;
using namespace Grimworks::Fuzz;

int LLVMFuzzerTestOneInput(const unsigned char* data, unsigned long size) {
    try {
        (void)MidiFile::Parse({data, size}, "song.mid");
    } catch (const HostError& error) {
        const std::string_view line = error.what();
        Check(!line.empty() && line.find('\n') == std::string_view::npos, "the message is one line");
    }
    return 0;
}

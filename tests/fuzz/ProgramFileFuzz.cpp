// Bytes of a program file.
#include "tests/fuzz/Check.h"
#include "tests/fuzz/Player.h"

#include <algorithm>

using namespace Grimworks;
using namespace Grimworks::Fuzz;

int LLVMFuzzerTestOneInput(const unsigned char* data, unsigned long size) {
    Player& player = SharedPlayer();
    ByteChunk file;
    file.PutBytes(data, static_cast<int>(std::min<unsigned long>(size, 1U << 20U)));
    (void)player.Plug().TakeProgramFile(file);
    player.CheckHealth();
    ByteChunk saved;
    player.Plug().MakeProgramFile(saved);
    Check(player.Plug().TakeProgramFile(saved), "a saved program can be read again");
    return 0;
}

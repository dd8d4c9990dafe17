#include "host/Cli.h"
#include "host/Interrupt.h"

#include <iostream>
#include <string>
#include <vector>

#ifdef _WIN32
#include <cstdlib>
#include <windows.h>

#include <shellapi.h>
#endif

namespace {

#ifdef _WIN32

// The arguments of main have lost every letter that the system's old code page does not know.
std::vector<std::string> Arguments(int, char**) {
    int count = 0;
    wchar_t** wide = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i) {
        const int bytes = WideCharToMultiByte(CP_UTF8, 0, wide[i], -1, nullptr, 0, nullptr, nullptr);
        std::string text(static_cast<std::size_t>(bytes), '\0');
        WideCharToMultiByte(CP_UTF8, 0, wide[i], -1, text.data(), bytes, nullptr, nullptr);
        text.resize(text.size() - 1);
        arguments.push_back(text);
    }
    LocalFree(wide);
    return arguments;
}

#else

std::vector<std::string> Arguments(int count, char** texts) {
    return {texts + 1, texts + count};
}

#endif

} // namespace

int main(int count, char** texts) {
    Grimworks::CatchInterrupts();
    return Grimworks::RunCommandLine(Arguments(count, texts), std::cout, std::cerr);
}

// Bytes of a text program, and of the curve in it.
#include "effects/CurveText.h"
#include "patches/TextProgram.h"
#include "tests/fuzz/Check.h"

#include <cmath>
#include <sstream>
#include <string>

using namespace Grimworks;
using namespace Grimworks::Fuzz;

int LLVMFuzzerTestOneInput(const unsigned char* data, unsigned long size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    SynthProgram program;
    std::string curveText;
    ReadTextProgram(text, program, curveText);
    Check(program.name.size() <= 32, "the name is cut");
    std::istringstream field(curveText.empty() ? text : curveText);
    CurvePoints points{};
    if (!ReadCurveText(field, points)) {
        for (const double point : points)
            Check(point == 0.0, "a refused curve changes nothing");
    }
    std::string again;
    SynthProgram second;
    ReadTextProgram(WriteTextProgram(program, curveText, ""), second, again);
    return 0;
}

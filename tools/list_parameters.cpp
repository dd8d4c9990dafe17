// Writes the reference of the parameters.
//
//     list_parameters docs/parameters.md

#include "tools/ParameterManual.h"

#include <fstream>
#include <iostream>

int main(int count, char** arguments) {
    if (count != 2) {
        std::cerr << "usage: list_parameters FILE\n";
        return 2;
    }
    std::ofstream out(arguments[1], std::ios::binary);
    out << Grimworks::ParameterManual::Text();
    out.close();
    if (!out) {
        std::cerr << "list_parameters: " << arguments[1] << ": cannot be written\n";
        return 2;
    }
    return 0;
}

#include "editor/TextEntry.h"

namespace Grimworks {

bool TextEntryTakes(const IParam* param, char character) {
    constexpr char kBackspace = '\b';
    if (param == nullptr || character == kBackspace) return true;
    const bool wholeNumber = (character >= '0' && character <= '9') || character == '+' || character == '-';
    switch (param->GetType()) {
    case IParam::Type::Bool:
    case IParam::Type::Int:
    case IParam::Type::Enum:
        return wholeNumber;
    case IParam::Type::Double:
        return wholeNumber || character == '.';
    case IParam::Type::None:
        break;
    }
    return true;
}

} // namespace Grimworks

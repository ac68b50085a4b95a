#include "formats/object_line.h"
#include "support/printing.h"

doctest::String doctest::StringMaker<GameObject>::convert(const GameObject& object) {
    std::wstring line;
    WriteObjectLine(line, object);
    return Quoted(line).c_str();
}

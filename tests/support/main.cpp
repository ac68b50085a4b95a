// The entry of the unit tests. `--accept` renews the golden pictures that differ.
#define DOCTEST_CONFIG_IMPLEMENT
#include "doctest/doctest.h"

#include "support/golden.h"

#include <string_view>

bool acceptGolden = false;

int main(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) acceptGolden = acceptGolden || std::string_view(argv[i]) == "--accept";
    doctest::Context context(argc, argv);
    return context.run();
}

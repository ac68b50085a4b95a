// The answers of mesa_bench.h where Mesa's off-screen renderer is not installed.
#include "mesa_bench.h"

std::string MesaNote() {
    return "Mesa: left out, its off-screen renderer (libosmesa6-dev) is not installed.";
}

void RegisterMesaBenchmarks(const BenchScene&, MesaOrder) {}

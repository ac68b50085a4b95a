#include "app/main_loop.h"

int main() { return RunProgram(); }

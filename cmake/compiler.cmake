# How every target is compiled: the same bits of every sum and product in every build, warnings as errors.
add_library(zel_compiler INTERFACE)
option(ZEL_WARNINGS_AS_ERRORS "Off for compilers whose warnings nobody has seen yet" ON)

if(MSVC)
    # Without the warning about other compilers' pragmas.
    target_compile_options(zel_compiler INTERFACE /utf-8 /W4 $<$<BOOL:${ZEL_WARNINGS_AS_ERRORS}>:/WX> /wd4068
        /permissive- /EHsc /fp:precise)
    target_compile_definitions(zel_compiler INTERFACE _CRT_SECURE_NO_WARNINGS)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
        target_compile_options(zel_compiler INTERFACE -ffp-contract=off -Wno-missing-field-initializers)
    endif()
    set(CMAKE_MSVC_RUNTIME_LIBRARY "MultiThreaded$<$<CONFIG:Debug>:Debug>")
    target_link_options(zel_compiler INTERFACE /Brepro)
else()
    target_compile_options(zel_compiler INTERFACE -ffp-contract=off -Wall -Wextra -Wshadow -Wfloat-conversion
        $<$<BOOL:${ZEL_WARNINGS_AS_ERRORS}>:-Werror> -Wno-missing-field-initializers)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # GCC 12 and 13 warn about their own std::string when it is concatenated.
        target_compile_options(zel_compiler INTERFACE -Wno-restrict)
    endif()
endif()

if(MINGW)
    # GCC aligns stack slots to 16 bytes only on this target, which is too little for AVX registers.
    target_compile_options(zel_compiler INTERFACE -Wa,-muse-unaligned-vector-move)
    # Address-space randomisation with high entropy, no executable data, the same bytes from the same sources.
    # The first system that runs it is Windows 6.0; the linker writes 4.0, for which the system changes how
    # windows and message boxes look.
    target_link_options(zel_compiler INTERFACE -static -Wl,--dynamicbase,--high-entropy-va,--nxcompat
        -Wl,--no-insert-timestamp
        -Wl,--major-os-version=6,--minor-os-version=0
        -Wl,--major-subsystem-version=6,--minor-subsystem-version=0)
endif()

if(ZEL_SANITIZE)
    # float-cast-overflow by name: GCC and Clang leave it out of "undefined".
    set(sanitizers -fsanitize=address,undefined,float-cast-overflow)
    target_compile_options(zel_compiler INTERFACE ${sanitizers} -fno-sanitize-recover=all
        -fno-omit-frame-pointer)
    target_link_options(zel_compiler INTERFACE ${sanitizers})
endif()

# Code of tests runs once: optimising it takes longer than it saves.
add_library(zel_test_code INTERFACE)
if(NOT MSVC)
    target_compile_options(zel_test_code INTERFACE -O0)
endif()

# What a fuzzer is to find its way through.
add_library(zel_fuzzed INTERFACE)
if(ZEL_FUZZ)
    target_compile_options(zel_fuzzed INTERFACE -fsanitize=fuzzer-no-link)
endif()

# Header-only libraries of the tests, copied so that a cross compiler sees them and nothing else of the host.
set(ZEL_THIRD_PARTY_DIR ${CMAKE_BINARY_DIR}/third_party)

function(zel_import_header name)
    find_path(${name}_dir ${name} PATHS /usr/include /usr/local/include NO_CMAKE_FIND_ROOT_PATH REQUIRED)
    configure_file(${${name}_dir}/${name} ${ZEL_THIRD_PARTY_DIR}/${name} COPYONLY)
endfunction()

if(ZEL_TESTS)
    zel_import_header(doctest/doctest.h)
endif()
if(ZEL_TESTS OR ZEL_BENCH OR ZEL_FUZZ)
    zel_import_header(stb/stb_image.h)
endif()
if(ZEL_TESTS)
    zel_import_header(stb/stb_image_write.h)
endif()

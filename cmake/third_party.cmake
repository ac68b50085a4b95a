# Header-only libraries of the tests, copied so that a cross compiler sees them and nothing else of the host.
set(ZEL_THIRD_PARTY_DIR ${CMAKE_BINARY_DIR}/third_party)

# In its folder or, as some collections of packages have it, without.
function(zel_import_header name)
    get_filename_component(file ${name} NAME)
    find_path(${name}_dir NAMES ${name} ${file} PATHS /usr/include /usr/local/include NO_CMAKE_FIND_ROOT_PATH
        REQUIRED)
    set(header ${${name}_dir}/${name})
    if(NOT EXISTS ${header})
        set(header ${${name}_dir}/${file})
    endif()
    configure_file(${header} ${ZEL_THIRD_PARTY_DIR}/${name} COPYONLY)
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

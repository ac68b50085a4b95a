# Several sources of tests compiled as one: what they all include is then read and instantiated once, which is most of
# the work. Each stands in a namespace of its own, so that their helpers may have the same names.
set(ZEL_SOURCES_PER_BATCH 1 CACHE STRING "How many sources of unit tests are compiled as one")

# Sets `batches` to what is compiled in place of the sources, which all lie below the current folder. Only sources of
# one folder come together, so that a new file moves few others to another batch.
function(zel_batch_sources batches sources)
    if(ZEL_SOURCES_PER_BATCH LESS 2)
        set(${batches} ${sources} PARENT_SCOPE)
        return()
    endif()
    set(folder "")
    set(batch "")
    set(written "")
    foreach(source IN LISTS sources ITEMS last/last)
        cmake_path(GET source PARENT_PATH source_folder)
        list(LENGTH batch length)
        if(length GREATER 0 AND (NOT source_folder STREQUAL folder OR length EQUAL ZEL_SOURCES_PER_BATCH))
            cmake_path(RELATIVE_PATH folder BASE_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR} OUTPUT_VARIABLE name)
            string(MAKE_C_IDENTIFIER ${name} id)  # sources of a folder may stand around those of one within it
            math(EXPR number_${id} "0${number_${id}} + 1")
            set(number ${number_${id}})
            set(output ${CMAKE_CURRENT_BINARY_DIR}/batches/${name}_${number}.cpp)
            add_custom_command(OUTPUT ${output} DEPENDS ${batch} ${CMAKE_SOURCE_DIR}/cmake/write_batch.cmake
                COMMAND ${CMAKE_COMMAND} "-DSOURCES=${batch}" -DROOT=${CMAKE_CURRENT_SOURCE_DIR} -DOUTPUT=${output}
                    -P ${CMAKE_SOURCE_DIR}/cmake/write_batch.cmake
                COMMENT "Writing batches/${name}_${number}.cpp"
                VERBATIM)
            list(APPEND written ${output})
            set(batch "")
        endif()
        set(folder ${source_folder})
        list(APPEND batch ${source})
    endforeach()
    set(${batches} ${written} PARENT_SCOPE)
endfunction()

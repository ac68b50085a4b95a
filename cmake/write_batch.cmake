# Writes to OUTPUT one source that includes all SOURCES, each in a namespace named after it. All headers come before:
# within the namespaces their guards leave nothing of them. Paths are relative to ROOT, so that compiler caches see
# the same text in every checkout.
set(headers "")
set(text "")
foreach(source IN LISTS SOURCES)
    file(STRINGS ${source} includes REGEX "^#include ")
    list(APPEND headers ${includes})
    cmake_path(GET source STEM name)
    cmake_path(RELATIVE_PATH source BASE_DIRECTORY ${ROOT} OUTPUT_VARIABLE path)
    string(APPEND text "\nnamespace ${name} {\n#include \"${path}\"\n}\n")
endforeach()
list(REMOVE_DUPLICATES headers)
list(JOIN headers "\n" headers)
file(CONFIGURE OUTPUT ${OUTPUT} CONTENT "${headers}\n${text}" @ONLY)

# The program itself, and the staged folder that runs as it stands.
set(resources ${CMAKE_SOURCE_DIR}/src/platform/windows/resources)
add_executable(ZelEngine WIN32 src/app/main.cpp ${resources}/zelengine.rc)
target_link_libraries(ZelEngine PRIVATE zel_core zel_platform_windows)
target_include_directories(ZelEngine PRIVATE ${resources})
set_property(SOURCE ${resources}/zelengine.rc PROPERTY OBJECT_DEPENDS
    ${resources}/zelengine.ico ${resources}/zelengine.manifest)
set_property(SOURCE ${resources}/zelengine.rc PROPERTY COMPILE_DEFINITIONS
    ZEL_VERSION_MAJOR=${PROJECT_VERSION_MAJOR}
    ZEL_VERSION_MINOR=${PROJECT_VERSION_MINOR}
    ZEL_VERSION_PATCH=${PROJECT_VERSION_PATCH})
if(MSVC)
    target_link_options(ZelEngine PRIVATE /ENTRY:mainCRTStartup /HIGHENTROPYVA /NXCOMPAT /DYNAMICBASE /MANIFEST:NO)
elseif(MINGW)
    # Names and lines, for reading the addresses of a crash report. They are moved into a file of their own, so that
    # the executable has the bytes that it has without them. Sources are named from the top of the project, and
    # --preserve-dates keeps the linker's time, which is none: the same sources give the same bytes of both files.
    set(symbols ${CMAKE_BINARY_DIR}/ZelEngine.debug)
    foreach(target zel_core zel_platform_windows ZelEngine)
        target_compile_options(${target} PRIVATE
            $<$<COMPILE_LANGUAGE:CXX>:-g1> $<$<COMPILE_LANGUAGE:CXX>:-ffile-prefix-map=${CMAKE_SOURCE_DIR}=.>)
    endforeach()
    add_custom_command(TARGET ZelEngine POST_BUILD
        COMMAND ${CMAKE_OBJCOPY} --only-keep-debug --preserve-dates $<TARGET_FILE:ZelEngine> ${symbols}
        COMMAND ${CMAKE_STRIP} --strip-all --preserve-dates $<TARGET_FILE:ZelEngine>
        VERBATIM)
endif()

set(ZEL_STAGE_DIR ${CMAKE_SOURCE_DIR}/build/stage/ZelEngine CACHE PATH "Where the runnable program is put")
add_custom_target(stage ALL
    COMMAND ${CMAKE_COMMAND} -E make_directory ${ZEL_STAGE_DIR}/assets
    COMMAND ${CMAKE_COMMAND} -E copy_if_different $<TARGET_FILE:ZelEngine> ${ZEL_STAGE_DIR}/ZelEngine.exe
    COMMAND ${CMAKE_COMMAND} -DFROM=${CMAKE_SOURCE_DIR}/assets -DTO=${ZEL_STAGE_DIR}/assets
            -P ${CMAKE_SOURCE_DIR}/cmake/copy_images.cmake
    COMMAND ${CMAKE_COMMAND} -E copy_directory ${CMAKE_SOURCE_DIR}/sample/Project ${ZEL_STAGE_DIR}/Project
    COMMAND ${CMAKE_COMMAND} -E copy_directory ${CMAKE_SOURCE_DIR}/sample/Dive ${ZEL_STAGE_DIR}/Dive
    COMMAND ${CMAKE_COMMAND} -E copy_directory ${CMAKE_SOURCE_DIR}/sample/Harvest ${ZEL_STAGE_DIR}/Harvest
    DEPENDS ZelEngine
    VERBATIM)
if(MINGW)
    # Beside the folder: whoever gets the program needs no symbols.
    add_custom_command(TARGET stage POST_BUILD
        COMMAND ${CMAKE_COMMAND} -E copy_if_different ${symbols} ${ZEL_STAGE_DIR}.debug
        VERBATIM)
endif()

# What every target of ours shares: warnings as errors, sanitizers, hardening.

set(CMAKE_CXX_FLAGS_RELEASE "-O2 -DNDEBUG")
set(TIRLO_SANITIZE "" CACHE STRING "Sanitizers to build with, as given to -fsanitize=")

add_library(tirlo_flags INTERFACE)
target_compile_options(tirlo_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Werror)
target_compile_definitions(tirlo_flags INTERFACE QT_NO_KEYWORDS QT_NO_FOREACH)
target_include_directories(tirlo_flags INTERFACE ${PROJECT_SOURCE_DIR}/src)

if(TIRLO_SANITIZE)
    # Virtual tables are looked at through a pipe, which sees nonsense where descriptors have run out.
    add_compile_options(-fsanitize=${TIRLO_SANITIZE} -fno-sanitize=vptr -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${TIRLO_SANITIZE})
else()
    include(CheckPIESupported)
    check_pie_supported()
    set(CMAKE_POSITION_INDEPENDENT_CODE ON)
    add_compile_options(-fstack-protector-strong -fstack-clash-protection)
    if(CMAKE_SYSTEM_PROCESSOR STREQUAL x86_64)
        add_compile_options(-fcf-protection)
    endif()
    # Without optimisation the checked calls are not there, and the compiler warns.
    add_compile_definitions(_GLIBCXX_ASSERTIONS $<$<NOT:$<CONFIG:Debug>>:_FORTIFY_SOURCE=2>)
    add_link_options(-Wl,-z,relro,-z,now)
endif()

# For tests that start programs. What the libraries do among themselves can't be seen by the thread
# sanitizer, and is not ours.
set(TIRLO_SANITIZER_OPTIONS "TSAN_OPTIONS=die_after_fork=0:ignore_noninstrumented_modules=1")
list(APPEND TIRLO_SANITIZER_OPTIONS
    "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/support/leaks.supp:print_suppressions=0")

# What most files of ours read anyway: a dozen headers, since whole modules cost more than they save.
set(TIRLO_COMMON_HEADERS
    <QByteArray> <QJsonObject> <QList> <QMap> <QObject> <QProperty> <QString> <QStringList>
    <algorithm> <functional> <memory> <optional> <utility> <vector>)
set(TIRLO_PAINTED_FOLDERS ui mascot island settings views)

# tirlo_folder(NAME LIBS...): the static library of one source folder, all its files but those of
# folders inside it that are libraries of their own.
function(tirlo_folder name)
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS *.cpp *.h)
    file(GLOB inner CONFIGURE_DEPENDS */CMakeLists.txt)
    foreach(list_file ${inner})
        cmake_path(GET list_file PARENT_PATH folder)
        list(FILTER sources EXCLUDE REGEX "^${folder}/")
    endforeach()
    add_library(tirlo_${name} STATIC ${sources})
    target_link_libraries(tirlo_${name} PUBLIC tirlo_flags ${ARGN})

    set(headers ${TIRLO_COMMON_HEADERS})
    if(${name} IN_LIST TIRLO_PAINTED_FOLDERS)
        list(APPEND headers <QPainter> <QPainterPath> <QWidget>)
    endif()
    target_precompile_headers(tirlo_${name} PRIVATE ${headers})
endfunction()

# tirlo_test(NAME SOURCES... LIBS libs...): one GoogleTest program, which CTest runs as a whole.
function(tirlo_test name)
    cmake_parse_arguments(arg "" "" "LIBS" ${ARGN})
    add_executable(${name} ${arg_UNPARSED_ARGUMENTS})
    target_link_libraries(${name} PRIVATE ${arg_LIBS} tirlo_test_support)
    target_precompile_headers(${name} REUSE_FROM tirlo_test_support)
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES TIMEOUT 300 ENVIRONMENT LC_ALL=C.UTF-8)
endfunction()

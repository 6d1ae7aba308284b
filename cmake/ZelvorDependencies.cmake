# Every outside package the build uses, looked up in one place before any target is
# declared. A fresh machine usually lacks several at once, so nothing stops at the first
# miss: each lookup is quiet, the misses are collected, and configure then fails once
# with every missing package, its Debian package and one apt-get line for them all.
#
# What this leaves behind for the rest of the build:
#   ICU::uc, ICU::i18n          always
#   fmt::fmt                    always, for Zelvor::Format and Zelvor::Interop (the
#                               library never links it)
#   zelvor::libical            always, private to Zelvor::Interop
#   ZELVOR_PYTHON_CRONITER      a python with croniter, the cron oracle of the interop
#                               tests, or empty (those cases then skip)
#   CLI11::CLI11                with ZELVOR_BUILD_TOOLS
#   GTest::gtest, GTest::gmock  with ZELVOR_BUILD_TESTS, and with them ODBC::ODBC
#                               and ZELVOR_SQLITE_ODBC_DRIVER, the driver's path
#   benchmark::benchmark        with ZELVOR_BUILD_BENCHMARKS
#   zelvor::gmp                 GMP, the independent oracle of the decimal tests,
#                               benchmarks and fuzz targets (never linked by the library)
#   zelvor::boost_multiprecision  Boost's decimal float, a peer of the decimal
#                               benchmarks (header only)
#   ZELVOR_FAKETIME             the faketime program, or empty
#   ZELVOR_CLOCK_TESTS          ON when the cases that pin the clock can run

set(ZELVOR_MISSING "")
set(ZELVOR_MISSING_PACKAGES "")

# zelvor_need(<found> <what> <debian package>): records a miss when <found> is false.
macro(zelvor_need found what package)
    if(NOT ${found})
        list(APPEND ZELVOR_MISSING "  ${what} (Debian package ${package})")
        list(APPEND ZELVOR_MISSING_PACKAGES ${package})
    endif()
endmacro()

find_package(ICU 70 QUIET COMPONENTS uc i18n)
zelvor_need(ICU_FOUND "ICU 70 or newer, uc and i18n" libicu-dev)

find_package(fmt 9 CONFIG QUIET)
zelvor_need(fmt_FOUND "fmt 9 or newer, for Zelvor::Format and Zelvor::Interop" libfmt-dev)

# The interop component reads and writes recurrence rules with libical.
find_package(PkgConfig QUIET)
if(PkgConfig_FOUND)
    pkg_check_modules(ZELVOR_LIBICAL QUIET IMPORTED_TARGET libical)
endif()
if(ZELVOR_LIBICAL_FOUND)
    add_library(zelvor::libical ALIAS PkgConfig::ZELVOR_LIBICAL)
else()
    zelvor_need(FALSE "libical, for Zelvor::Interop" libical-dev)
endif()

if(ZELVOR_BUILD_TESTS)
    # Optional: Debian's python with croniter checks the cron translation; the pyenv or
    # venv python first on a developer's PATH usually lacks it.
    find_program(ZELVOR_SYSTEM_PYTHON python3 PATHS /usr/bin NO_DEFAULT_PATH)
    if(ZELVOR_SYSTEM_PYTHON)
        execute_process(COMMAND ${ZELVOR_SYSTEM_PYTHON} -c "import croniter"
            RESULT_VARIABLE croniter_status OUTPUT_QUIET ERROR_QUIET)
    endif()
    if(ZELVOR_SYSTEM_PYTHON AND croniter_status EQUAL 0)
        set(ZELVOR_PYTHON_CRONITER ${ZELVOR_SYSTEM_PYTHON})
    else()
        set(ZELVOR_PYTHON_CRONITER "")
        message(WARNING "python3-croniter not found: the cron oracle cases of the interop "
                        "tests skip")
    endif()
endif()

if(ZELVOR_BUILD_TOOLS)
    find_package(CLI11 CONFIG QUIET)
    zelvor_need(CLI11_FOUND "CLI11, for the zelvor tool" libcli11-dev)
endif()

if(ZELVOR_BUILD_TESTS)
    find_package(GTest CONFIG QUIET)
    zelvor_need(GTest_FOUND "GoogleTest" libgtest-dev)
    if(GTest_FOUND AND NOT TARGET GTest::gmock)
        zelvor_need(FALSE "GoogleMock" libgmock-dev)
    endif()
    # The database round trip: unixODBC and SQLite's ODBC driver, loaded by its path.
    find_package(ODBC QUIET)
    zelvor_need(ODBC_FOUND "unixODBC" unixodbc-dev)
    find_library(ZELVOR_SQLITE_ODBC_DRIVER sqlite3odbc PATH_SUFFIXES odbc)
    zelvor_need(ZELVOR_SQLITE_ODBC_DRIVER "the SQLite ODBC driver" libsqliteodbc)
endif()

if(ZELVOR_BUILD_BENCHMARKS)
    find_package(benchmark CONFIG QUIET)
    zelvor_need(benchmark_FOUND "Google Benchmark" libbenchmark-dev)
    find_path(ZELVOR_BOOST_INCLUDE_DIR boost/multiprecision/cpp_dec_float.hpp)
    if(ZELVOR_BOOST_INCLUDE_DIR)
        add_library(zelvor::boost_multiprecision INTERFACE IMPORTED)
        # SYSTEM: the project's warnings are not Boost's to answer.
        set_target_properties(zelvor::boost_multiprecision PROPERTIES
            INTERFACE_INCLUDE_DIRECTORIES ${ZELVOR_BOOST_INCLUDE_DIR}
            INTERFACE_SYSTEM_INCLUDE_DIRECTORIES ${ZELVOR_BOOST_INCLUDE_DIR})
    else()
        zelvor_need(FALSE "Boost.Multiprecision, a peer of the decimal benchmarks" libboost-dev)
    endif()
endif()

if(ZELVOR_BUILD_TESTS OR ZELVOR_BUILD_BENCHMARKS OR ZELVOR_BUILD_FUZZERS)
    find_library(ZELVOR_GMP_LIBRARY gmp)
    find_path(ZELVOR_GMP_INCLUDE_DIR gmp.h)
    if(ZELVOR_GMP_LIBRARY AND ZELVOR_GMP_INCLUDE_DIR)
        add_library(zelvor::gmp UNKNOWN IMPORTED)
        set_target_properties(zelvor::gmp PROPERTIES
            IMPORTED_LOCATION ${ZELVOR_GMP_LIBRARY}
            INTERFACE_INCLUDE_DIRECTORIES ${ZELVOR_GMP_INCLUDE_DIR})
    else()
        zelvor_need(FALSE "GMP, the reference of the decimal tests and benchmarks" libgmp-dev)
    endif()
endif()

# The sanitizer runtimes come apart from clang on Debian; without them the compiler
# works and only the link fails, late and obscurely, so try the link now.
set(ZELVOR_RUNTIME_FLAGS "")
if(ZELVOR_SANITIZE OR ZELVOR_BUILD_FUZZERS)
    set(ZELVOR_RUNTIME_FLAGS -fsanitize=address,undefined)
elseif(ZELVOR_TSAN)
    set(ZELVOR_RUNTIME_FLAGS -fsanitize=thread)
endif()
if(ZELVOR_RUNTIME_FLAGS)
    include(CheckCXXSourceCompiles)
    set(CMAKE_REQUIRED_FLAGS ${ZELVOR_RUNTIME_FLAGS})
    set(CMAKE_REQUIRED_LINK_OPTIONS ${ZELVOR_RUNTIME_FLAGS})
    check_cxx_source_compiles("int main() { return 0; }" ZELVOR_SANITIZER_RUNTIME)
    unset(CMAKE_REQUIRED_FLAGS)
    unset(CMAKE_REQUIRED_LINK_OPTIONS)
    zelvor_need(ZELVOR_SANITIZER_RUNTIME "the sanitizer runtime of clang 14" libclang-rt-14-dev)
endif()

# libfaketime stops the clock for the tests that resolve times against the present.
# Without it those cases are left out, and configure says so. Nor do they run in an
# instrumented build: the ASan and TSan runtimes read the clock while they start, before
# libfaketime's preloaded clock functions are ready; the program then hangs (ASan's
# allocator holds a lock while libfaketime's dlsym allocates) or waits for ever in
# libfaketime's recursion guard (TSan, seen to depend on as little as the length of the
# program's path). The plain build and valgrind run them.
find_program(ZELVOR_FAKETIME faketime)
if(ZELVOR_BUILD_TESTS AND NOT ZELVOR_FAKETIME)
    message(WARNING "faketime not found (Debian package faketime): the tests that pin the "
                    "clock are not registered")
endif()
if(ZELVOR_FAKETIME AND NOT ZELVOR_SANITIZE AND NOT ZELVOR_TSAN)
    set(ZELVOR_CLOCK_TESTS ON)
else()
    set(ZELVOR_CLOCK_TESTS OFF)
endif()

if(ZELVOR_MISSING)
    list(REMOVE_DUPLICATES ZELVOR_MISSING_PACKAGES)
    list(JOIN ZELVOR_MISSING "\n" missing)
    list(JOIN ZELVOR_MISSING_PACKAGES " " packages)
    message(FATAL_ERROR "Missing packages:\n${missing}\n"
                        "Install them all at once (Debian 12):\n"
                        "  apt-get install ${packages}\n")
endif()

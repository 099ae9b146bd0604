# What every target of the house has in common: warnings, sanitizers, precompiled header, folders.

find_program(QK_CCACHE ccache)
if(QK_CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${QK_CCACHE})
endif()

# Four hundred programs are linked; this linker takes a quarter of the time.
find_program(QK_MOLD mold)
if(QK_MOLD AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_GREATER_EQUAL 12.1)
  add_link_options(-fuse-ld=mold)
endif()

add_library(qk_options INTERFACE)
target_include_directories(qk_options INTERFACE ${CMAKE_SOURCE_DIR})
target_compile_features(qk_options INTERFACE cxx_std_20)
target_compile_definitions(qk_options INTERFACE
  QT_NO_URL_CAST_FROM_STRING QT_NO_FOREACH QT_NO_KEYWORDS
  QT_DISABLE_DEPRECATED_BEFORE=0x060400)
target_compile_options(qk_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor
  -Woverloaded-virtual -Werror=return-type -Werror=switch)
if(QK_SANITIZE)
  target_compile_options(qk_options INTERFACE -fsanitize=address,undefined
    -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  target_link_options(qk_options INTERFACE -fsanitize=address,undefined)
endif()

if(QK_PCH)
  add_library(qk_pch STATIC ${CMAKE_SOURCE_DIR}/cmake/pch.cpp)
  target_link_libraries(qk_pch PUBLIC qk_options Qt6::Widgets Qt6::Sql)
  target_compile_options(qk_pch PUBLIC -fpch-preprocess)  # ccache wants it
  target_precompile_headers(qk_pch PRIVATE ${CMAKE_SOURCE_DIR}/cmake/pch.h)
  set_target_properties(qk_pch PROPERTIES AUTOMOC OFF AUTOUIC OFF AUTORCC OFF)

  add_library(qk_core_pch STATIC ${CMAKE_SOURCE_DIR}/cmake/pch.cpp)
  target_link_libraries(qk_core_pch PUBLIC qk_options Qt6::Core)
  target_compile_options(qk_core_pch PUBLIC -fpch-preprocess)
  target_precompile_headers(qk_core_pch PRIVATE ${CMAKE_SOURCE_DIR}/cmake/core_pch.h)
  set_target_properties(qk_core_pch PROPERTIES AUTOMOC OFF AUTOUIC OFF AUTORCC OFF)

  # For tests: half of their compiling was reading Qt Test. The folder that Qt puts into each test's command
  # line would make a common header unfit.
  set_property(TARGET Qt6::Test PROPERTY INTERFACE_COMPILE_DEFINITIONS QT_TESTLIB_LIB)
  foreach(kind core window)
    add_library(qk_${kind}_test_pch STATIC ${CMAKE_SOURCE_DIR}/cmake/pch.cpp)
    target_link_libraries(qk_${kind}_test_pch PUBLIC qk_options Qt6::Core Qt6::Test)
    target_compile_options(qk_${kind}_test_pch PUBLIC -fpch-preprocess)
    target_precompile_headers(qk_${kind}_test_pch PRIVATE ${CMAKE_SOURCE_DIR}/cmake/${kind}_test_pch.h)
    set_target_properties(qk_${kind}_test_pch PROPERTIES AUTOMOC OFF AUTOUIC OFF AUTORCC OFF)
  endforeach()
  target_link_libraries(qk_window_test_pch PUBLIC Qt6::Widgets)
  cmake_language(DEFER DIRECTORY ${CMAKE_SOURCE_DIR} CALL qk_precompile_tests)
endif()

# qk_collect_links(OUT TARGET): what TARGET is compiled with, by way of all that it links.
function(qk_collect_links out target)
  set(found ${${out}})
  get_target_property(links ${target} INTERFACE_LINK_LIBRARIES)
  foreach(link IN LISTS links)
    if(TARGET "${link}" AND NOT link IN_LIST found)
      list(APPEND found ${link})
      qk_collect_links(found ${link})
    endif()
  endforeach()
  set(${out} ${found} PARENT_SCOPE)
endfunction()

# The compiler takes a precompiled header only with the same Qt modules: a test with others does without.
function(qk_precompile_tests)
  get_property(tests GLOBAL PROPERTY QK_TESTS)
  foreach(test IN LISTS tests)
    get_target_property(found ${test} LINK_LIBRARIES)
    foreach(link IN LISTS found)
      qk_collect_links(found ${link})
    endforeach()
    if(Qt6::Network IN_LIST found)
      continue()
    elseif(Qt6::Widgets IN_LIST found)
      target_precompile_headers(${test} REUSE_FROM qk_window_test_pch)
    elseif(NOT Qt6::Gui IN_LIST found)
      target_precompile_headers(${test} REUSE_FROM qk_core_test_pch)
    endif()
  endforeach()
endfunction()

# qk_library(NAME SOURCES ... LINK ...): a room or a part of one. Widget code says WIDGETS.
function(qk_library name)
  cmake_parse_arguments(ARG "WIDGETS" "" "SOURCES;LINK" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  set_property(GLOBAL APPEND PROPERTY QK_GENERATED ${name}_autogen)
  target_link_libraries(${name} PUBLIC qk_options Qt6::Core ${ARG_LINK})
  if(ARG_WIDGETS)
    target_link_libraries(${name} PUBLIC Qt6::Widgets)
    if(QK_PCH)
      target_link_libraries(${name} PRIVATE Qt6::Sql)
      target_precompile_headers(${name} REUSE_FROM qk_pch)
    endif()
  elseif(QK_PCH)
    target_precompile_headers(${name} REUSE_FROM qk_core_pch)
  endif()
endfunction()

# qk_test(NAME SOURCES ... LINK ... LABELS ...): a Qt Test program, run offscreen under CTest. The label
# "postgres" gives it the PostgreSQL cluster of the run (tests/support/postgres_server.h). ON_BOTH_ENGINES runs
# it twice, its stores (tests/support/test_store.h) being files (label "sqlite"), or, as NAME_postgres,
# databases on that cluster (label "postgres").
function(qk_test name)
  cmake_parse_arguments(ARG "ON_BOTH_ENGINES" "TIMEOUT" "SOURCES;LINK;LABELS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  set_property(GLOBAL APPEND PROPERTY QK_TESTS ${name})
  target_link_libraries(${name} PRIVATE qk_options Qt6::Test ${ARG_LINK})
  qk_moc_tests(${name} ${ARG_SOURCES})
  if(NOT ARG_TIMEOUT)
    set(ARG_TIMEOUT 300)  # a hang, not a busy machine
  endif()
  if(ARG_ON_BOTH_ENGINES)
    target_sources(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests/support/store_witness.cpp)
    target_link_libraries(${name} PRIVATE qk_test_store)
    qk_test_run(${name} ${name} ${ARG_TIMEOUT} "" sqlite ${ARG_LABELS})
    qk_test_run(${name}_postgres ${name} ${ARG_TIMEOUT} "QK_TEST_ENGINE=postgres" postgres ${ARG_LABELS})
  else()
    qk_test_run(${name} ${name} ${ARG_TIMEOUT} "" ${ARG_LABELS})
  endif()
endfunction()

# qk_moc_tests(TARGET SOURCES...): each source test_x.cpp includes its test_x.moc. One step for each, where CMake's
# own generators are four a program.
function(qk_moc_tests target)
  set_target_properties(${target} PROPERTIES AUTOMOC OFF AUTOUIC OFF AUTORCC OFF)
  target_include_directories(${target} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/${target}_moc)
  foreach(source IN LISTS ARGN)
    get_filename_component(base ${source} NAME_WE)
    if(base MATCHES "^test_")
      set(moc ${CMAKE_CURRENT_BINARY_DIR}/${target}_moc/${base}.moc)
      qt_generate_moc(${source} ${moc} TARGET ${target})
      target_sources(${target} PRIVATE ${moc})
    endif()
  endforeach()
endfunction()

# qk_test_run(NAME PROGRAM TIMEOUT ENVIRONMENT LABELS...): one entry of CTest.
function(qk_test_run name program timeout environment)
  add_test(NAME ${name} COMMAND ${program})
  list(APPEND environment "QT_QPA_PLATFORM=offscreen" "LC_ALL=C.UTF-8" "QT_LOGGING_RULES=qt.qpa.*=false")
  if("postgres" IN_LIST ARGN)
    get_property(postgres_folder GLOBAL PROPERTY QK_POSTGRES_FOLDER)
    list(APPEND environment "QK_TEST_POSTGRES=${postgres_folder}")
    set_tests_properties(${name} PROPERTIES FIXTURES_REQUIRED postgres)
  endif()
  set_tests_properties(${name} PROPERTIES TIMEOUT ${timeout} LABELS "${ARGN}" ENVIRONMENT "${environment}")
endfunction()

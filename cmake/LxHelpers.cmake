# lx_add_library(NAME <target> DIR <folder> [DEPS ...] [PRIVATE_DEPS ...])
# Every .cpp/.h/.qrc under the folder belongs to the library, so adding a file needs no CMake edit.
# Headers are installed under include/<target>/ with their sub-folders.
function(lx_add_library)
  cmake_parse_arguments(A "" "NAME;DIR" "DEPS;PRIVATE_DEPS;EXTRA_SOURCES" ${ARGN})
  file(GLOB_RECURSE _src CONFIGURE_DEPENDS
    ${A_DIR}/*.cpp ${A_DIR}/*.h ${A_DIR}/*.qrc)
  add_library(${A_NAME} SHARED ${_src} ${A_EXTRA_SOURCES})
  add_library(LxUIKit::${A_NAME} ALIAS ${A_NAME})
  target_include_directories(${A_NAME} PUBLIC
    $<BUILD_INTERFACE:${LX_INCLUDE_ROOT}>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  target_link_libraries(${A_NAME} PUBLIC ${A_DEPS} PRIVATE ${A_PRIVATE_DEPS})
  set_target_properties(${A_NAME} PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}
    INSTALL_RPATH "${LX_LIB_INSTALL_RPATH}")
  install(TARGETS ${A_NAME} EXPORT LxUIKitTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
  install(DIRECTORY ${A_DIR}/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/${A_NAME}
    FILES_MATCHING PATTERN "*.h" PATTERN "*_p.h" EXCLUDE)
endfunction()

# lx_add_qt_test(<name> <sources...> LIBS ...): one QtTest executable registered with CTest,
# running on the offscreen platform so plain `ctest` works without a display.
function(lx_add_qt_test name)
  cmake_parse_arguments(A "" "" "LIBS" ${ARGN})
  add_executable(${name} ${A_UNPARSED_ARGUMENTS})
  target_link_libraries(${name} PRIVATE Qt5::Test LxTestSupport ${A_LIBS})
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES
    ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LX_PRODUCT_ROOT=${CMAKE_BINARY_DIR}/test-product/${name};ASAN_OPTIONS=detect_leaks=0;UBSAN_OPTIONS=print_stacktrace=1"
    TIMEOUT 300)
endfunction()

# lx_embed_translations(<out-var> NAME <resource> PREFIX <qrc-prefix> TS <files.ts...>)
# Compiles Qt Linguist files with lrelease at build time and embeds the .qm files as a resource
# under <qrc-prefix>; <out-var> receives the generated source to add to the target.
function(lx_embed_translations out)
  cmake_parse_arguments(A "" "NAME;PREFIX" "TS" ${ARGN})
  qt5_add_translation(_qm ${A_TS})
  set(_qrc ${CMAKE_CURRENT_BINARY_DIR}/${A_NAME}.qrc)
  set(_content "<RCC><qresource prefix=\"${A_PREFIX}\">\n")
  foreach(qm ${_qm})
    get_filename_component(_n ${qm} NAME)
    string(APPEND _content "  <file alias=\"${_n}\">${qm}</file>\n")
  endforeach()
  string(APPEND _content "</qresource></RCC>\n")
  set(_old "")
  if(EXISTS ${_qrc})
    file(READ ${_qrc} _old)
  endif()
  if(NOT _old STREQUAL _content)  # unchanged resources are not compiled again
    file(WRITE ${_qrc} "${_content}")
  endif()
  set(_cpp ${CMAKE_CURRENT_BINARY_DIR}/qrc_${A_NAME}.cpp)
  add_custom_command(OUTPUT ${_cpp}
    COMMAND Qt5::rcc -name ${A_NAME} ${_qrc} -o ${_cpp}
    DEPENDS ${_qm} ${_qrc} VERBATIM)
  set_source_files_properties(${_cpp} PROPERTIES SKIP_AUTOGEN ON)
  set(${out} ${_cpp} PARENT_SCOPE)
endfunction()

include(GenerateExportHeader)

# lx_add_library(NAME <target> DIR <folder> [DEPS ...] [PRIVATE_DEPS ...] [LX_DEPS ...]
#                [EXTRA_SOURCES ...])
# Every .cpp/.h/.qrc under the folder belongs to the library, so adding a file needs no CMake edit.
#
# The sources are compiled once, into the object library <target>_obj, and linked twice:
#  - into the shared library <target>, built with hidden visibility, so it exports only what is
#    marked <TARGET>_EXPORT in the generated header <target>/<target>Export.h;
#  - directly into the test, benchmark and fuzz programs (see lx_link_kit_internals), which reach
#    the internals a host never sees.
# LX_DEPS names the other libraries of the kit this one builds on; DEPS are the link dependencies
# its public headers need, PRIVATE_DEPS the ones only its sources need.
# Headers are installed under include/<target>/ with their sub-folders, except *_p.h.
function(lx_add_library)
  cmake_parse_arguments(A "" "NAME;DIR" "DEPS;PRIVATE_DEPS;LX_DEPS;EXTRA_SOURCES" ${ARGN})
  file(GLOB_RECURSE _src CONFIGURE_DEPENDS ${A_DIR}/*.cpp ${A_DIR}/*.h ${A_DIR}/*.qrc)
  string(TOUPPER ${A_NAME} _upper)
  set(_gen ${CMAKE_BINARY_DIR}/include)

  set(_obj ${A_NAME}_obj)
  add_library(${_obj} OBJECT ${_src} ${A_EXTRA_SOURCES})
  set(_obj_deps)
  foreach(d ${A_LX_DEPS})
    list(APPEND _obj_deps ${d}_obj)
  endforeach()
  target_include_directories(${_obj} PUBLIC ${LX_INCLUDE_ROOT} ${_gen})
  target_link_libraries(${_obj} PUBLIC ${_obj_deps} ${A_DEPS} PRIVATE ${A_PRIVATE_DEPS})
  # The objects build the shared library: the export macro must mark, not import.
  target_compile_definitions(${_obj} PRIVATE ${A_NAME}_EXPORTS)
  set_target_properties(${_obj} PROPERTIES CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)

  add_library(${A_NAME} SHARED $<TARGET_OBJECTS:${_obj}>)
  add_library(LxUIKit::${A_NAME} ALIAS ${A_NAME})
  target_include_directories(${A_NAME} PUBLIC
    $<BUILD_INTERFACE:${LX_INCLUDE_ROOT}> $<BUILD_INTERFACE:${_gen}>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  target_link_libraries(${A_NAME} PUBLIC ${A_LX_DEPS} ${A_DEPS} PRIVATE ${A_PRIVATE_DEPS})
  set_target_properties(${A_NAME} PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}
    INSTALL_RPATH "${LX_LIB_INSTALL_RPATH}" LINKER_LANGUAGE CXX)

  generate_export_header(${A_NAME} BASE_NAME ${_upper}
    EXPORT_FILE_NAME ${_gen}/${A_NAME}/${A_NAME}Export.h)
  # The library's own log and assertion macros (<target>/<target>Log_p.h), never installed.
  set(LX_LIB ${A_NAME})
  set(LX_LIB_UPPER ${_upper})
  configure_file(${PROJECT_SOURCE_DIR}/cmake/LibraryLog_p.h.in ${_gen}/${A_NAME}/${A_NAME}Log_p.h @ONLY)
  set_property(GLOBAL APPEND PROPERTY LX_KIT_OBJECT_LIBRARIES ${_obj})

  install(TARGETS ${A_NAME} EXPORT LxUIKitTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
  install(DIRECTORY ${A_DIR}/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/${A_NAME}
    FILES_MATCHING PATTERN "*.h" PATTERN "*_p.h" EXCLUDE PATTERN "resources" EXCLUDE PATTERN "translations" EXCLUDE)
  install(DIRECTORY ${_gen}/${A_NAME}/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/${A_NAME}
    FILES_MATCHING PATTERN "*.h" PATTERN "*_p.h" EXCLUDE)
endfunction()

# lx_link_kit_internals(<target>): links the objects of every library of the kit straight into a
# program (tests, benchmarks, fuzz targets), so it can use internal classes and _p.h headers. Such
# a program must not also link the shared libraries.
function(lx_link_kit_internals target)
  get_property(_objs GLOBAL PROPERTY LX_KIT_OBJECT_LIBRARIES)
  target_link_libraries(${target} PRIVATE ${_objs})
endfunction()
# lx_add_qt_test(<name> <sources...> [HOST] LIBS ...): one QtTest executable registered with CTest,
# running on the offscreen platform so plain `ctest` works without a display. A test links the
# kit's objects (it may test internals); with HOST it links the shared libraries, as a host does.
function(lx_add_qt_test name)
  cmake_parse_arguments(A "HOST" "" "LIBS" ${ARGN})
  add_executable(${name} ${A_UNPARSED_ARGUMENTS})
  target_link_libraries(${name} PRIVATE Qt5::Test LxTestSupport ${A_LIBS})
  if(NOT A_HOST)
    lx_link_kit_internals(${name})
  endif()
  add_test(NAME ${name} COMMAND ${name})
  # ThreadSanitizer: Qt is not instrumented, so what Qt's own code does inside Qt (its allocations,
  # copies and locks) is left out rather than misread as races; every access the kit's and the
  # tests' code makes is checked. No suppressions. A report fails the test.
  set(_tsan "TSAN_OPTIONS=halt_on_error=1 second_deadlock_stack=1 ignore_noninstrumented_modules=1")
  set_tests_properties(${name} PROPERTIES
    ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LX_PRODUCT_ROOT=${CMAKE_BINARY_DIR}/test-product/${name};ASAN_OPTIONS=detect_leaks=0;UBSAN_OPTIONS=print_stacktrace=1;${_tsan}"
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

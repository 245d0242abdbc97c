# Installs the kit from the build tree into a private prefix, then configures, builds and runs the
# consumer project against that prefix alone, with no LD_LIBRARY_PATH: the installed libraries and
# programs must find each other through their own run paths. The prefix is then moved, and the
# installed gallery must still start from the new place.
set(root ${BIN}/consumer-test)
set(prefix ${root}/install)
set(build ${root}/build)
file(REMOVE_RECURSE ${root})
set(ENV{LD_LIBRARY_PATH} "")
set(ENV{QT_QPA_PLATFORM} offscreen)
set(ENV{LX_PRODUCT_ROOT} ${root}/product)

function(run what)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE out)
  if(rc)
    message(FATAL_ERROR "${what} failed (${rc}):\n${out}")
  endif()
endfunction()

run("install" ${CMAKE_COMMAND} --install ${BIN} --prefix ${prefix})

# The installed tree holds what a host may include, and nothing else: no internal header, and no
# header that needs one of Qt's private headers.
file(GLOB_RECURSE installed_headers ${prefix}/include/*)
foreach(h ${installed_headers})
  if(h MATCHES "_p\\.h$")
    message(FATAL_ERROR "internal header installed: ${h}")
  endif()
  file(STRINGS ${h} private_includes REGEX "#include.*(/private/|_p\\.h)")
  if(private_includes)
    message(FATAL_ERROR "installed header ${h} includes a private header: ${private_includes}")
  endif()
endforeach()

# The README's host snippet, exactly as the README shows it.
file(READ ${SRC}/README.md readme)
string(FIND "${readme}" "```cpp\n#include <LxUIKit/LxUIKit.h>" begin)
if(begin EQUAL -1)
  message(FATAL_ERROR "README.md has no host snippet (```cpp block starting with the umbrella include)")
endif()
math(EXPR begin "${begin} + 7")
string(SUBSTRING "${readme}" ${begin} -1 rest)
string(FIND "${rest}" "```" end)
string(SUBSTRING "${rest}" 0 ${end} snippet)
file(WRITE ${root}/readme_host.cpp "${snippet}")

# Each library exports only what its headers mark for hosts: internals (anonymous namespaces,
# detail namespaces, private classes) never reach the dynamic symbol table.
file(GLOB installed_libs ${prefix}/lib*/libLx*.so)
foreach(lib ${installed_libs})
  execute_process(COMMAND nm -D -C --defined-only ${lib} OUTPUT_VARIABLE symbols RESULT_VARIABLE rc)
  if(rc)
    message(FATAL_ERROR "nm failed on ${lib}")
  endif()
  string(REGEX MATCH "[^\n]*(\\(anonymous namespace\\)|::detail::|Private::)[^\n]*" leaked "${symbols}")
  if(leaked)
    message(FATAL_ERROR "${lib} exports an internal name: ${leaked}")
  endif()
endforeach()

run("consumer configure" ${CMAKE_COMMAND} -S ${SRC}/tests/consumer -B ${build} -DCMAKE_PREFIX_PATH=${prefix}
    -DLX_README_HOST=${root}/readme_host.cpp)
run("consumer build" ${CMAKE_COMMAND} --build ${build})
run("consumer run" ${build}/consumer)

if(EXISTS ${prefix}/bin/LxUIKitGallery)
  file(RENAME ${prefix} ${root}/moved)
  run("installed gallery from a moved prefix" ${root}/moved/bin/LxUIKitGallery --page toasts --screenshot ${root}/gallery.png)
  file(SIZE ${root}/gallery.png size)
  if(size LESS 1000)
    message(FATAL_ERROR "the installed gallery wrote no screenshot")
  endif()
endif()

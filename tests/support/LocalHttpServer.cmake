# The local HTTP server of the tests and the benchmarks, as its own small library: the benchmarks
# link it without the rest of the test support (QtTest, libjpeg, zlib).
include_guard(GLOBAL)
add_library(LxLocalHttpServer STATIC ${CMAKE_CURRENT_LIST_DIR}/LocalHttpServer.cpp
                                     ${CMAKE_CURRENT_LIST_DIR}/LocalHttpServer.h)
target_include_directories(LxLocalHttpServer PUBLIC ${CMAKE_CURRENT_LIST_DIR})
target_link_libraries(LxLocalHttpServer PUBLIC Qt5::Network)

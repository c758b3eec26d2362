// Compiled once for its headers; tests/CMakeLists.txt names them.

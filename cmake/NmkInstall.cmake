# Installation: headers, libraries and the CMake package.

// cmZipMethod.h: how the data of a zip entry is stored.
#pragma once

/// These are the numbers of this library; in a zip file deflate is method 8.
enum cmZipMethod : int {
    cmZipMethodStored = 0,
    cmZipMethodDeflate = 1,
};

// nmkGiTriDataTypes.h: settings of a block of triangles that are numbers.
//
// Other values than those named here may be stored and are given back as they are.
#pragma once

#include <cstdint>

/// What kind of model a block belongs to.
enum nmkGiTriDataModelType : std::int32_t { nmkGiTriDataModelUsual = 1 };

/// How a block is machined; the modes 0 to 2 of nmkMTPMachineMode mean the same.
enum nmkGiTriDataMachiningType : std::int32_t {
    nmkGiTriDataMachining0 = 0,
    nmkGiTriDataMachining1 = 1,
    nmkGiTriDataMachining2 = 2
};

// nmkFileDircoPageArr: names in an array whose elements stay where they are as it grows.
#pragma once

#include <ncamcontainer/coPageArr.h>
#include <nmktoolbox/files/nmkFileDir.h>

using nmkFileDircoPageArr = coPageArr<nmkFileDir>;

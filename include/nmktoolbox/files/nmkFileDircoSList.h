// nmkFileDircoSList: names in a singly linked list.
#pragma once

#include <ncamcontainer/coSList.h>
#include <nmktoolbox/files/nmkFileDir.h>

using nmkFileDircoSList = coSList<nmkFileDir>;

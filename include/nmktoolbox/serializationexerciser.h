// serializationexerciser.h: objects through an archive and back.
#pragma once

#include <nmktoolbox/serializationexerciser/nmkExpectedByteArray.h>  // bytes or an error
#include <nmktoolbox/serializationexerciser/serialize.h>             // writes and reads an object

// nmkTransPairutStringcoTable: texts by pairs of translation types.
//
// A pair holds the type that a translation starts from and the type that it results in. The nil
// pair has the value 12 in both; records are compared by their pairs alone, whatever their texts.
#pragma once

#include <ncamcontainer/coTable.h>
#include <nmktoolbox/export.h>
#include <utils/utString.h>

#include <cstdint>

/// The type of a translated object. Only the value for "none" has a name here.
enum TRANSLATE_TYPE : std::int32_t { translate_type_nil = 12 };

/// The type before and the type after a translation.
struct NMKTOOLBOX_EXPORT TRANSLATE_TYPETRANSLATE_TYPEnmkcoPair {
    TRANSLATE_TYPE first = translate_type_nil;
    TRANSLATE_TYPE second = translate_type_nil;

    bool operator==(const TRANSLATE_TYPETRANSLATE_TYPEnmkcoPair&) const = default;
};

/// The hash of a pair for sets and tables.
NMKTOOLBOX_EXPORT unsigned int co_hash(const TRANSLATE_TYPETRANSLATE_TYPEnmkcoPair& pair);

using nmkTransPairutStringcoTableP = coTableP<TRANSLATE_TYPETRANSLATE_TYPEnmkcoPair, utString>;
using nmkTransPairutStringcoTablePcoSet =
    coSet<nmkTransPairutStringcoTableP,
          coTablePInterface<TRANSLATE_TYPETRANSLATE_TYPEnmkcoPair, utString>>;
using nmkTransPairutStringcoTable = coTable<TRANSLATE_TYPETRANSLATE_TYPEnmkcoPair, utString>;

// Compiled once, in this library, which exports it.
extern template class NMKTOOLBOX_EXPORT coTable<TRANSLATE_TYPETRANSLATE_TYPEnmkcoPair, utString>;

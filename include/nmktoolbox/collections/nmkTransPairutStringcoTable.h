// nmkTransPairutStringcoTable: texts by pairs of translation types.
//
// A pair says from which type to which a translation goes. The nil pair has both values at 12; a
// record is known by its pair alone, whatever its text.
#pragma once

#include <ncamcontainer/coTable.h>
#include <nmktoolbox/export.h>
#include <utils/utString.h>

#include <cstdint>

/// A type of what is translated. Only the value that means "none" has a name here.
enum TRANSLATE_TYPE : std::int32_t { translate_type_nil = 12 };

/// From a type to a type.
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

extern template class coTable<TRANSLATE_TYPETRANSLATE_TYPEnmkcoPair, utString>;

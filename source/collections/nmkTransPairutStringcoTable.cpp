#include <nmktoolbox/collections/nmkTransPairutStringcoTable.h>

unsigned int co_hash(const TRANSLATE_TYPETRANSLATE_TYPEnmkcoPair& pair) {
    static_assert(sizeof pair == 2 * sizeof(std::int32_t), "the pair's bytes are its two values");
    return co_hash(&pair, static_cast<int>(sizeof pair));
}

template class coTable<TRANSLATE_TYPETRANSLATE_TYPEnmkcoPair, utString>;

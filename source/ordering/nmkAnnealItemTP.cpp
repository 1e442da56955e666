#include <nmktoolbox/ordering/nmkAnnealItemTP.h>

nmkAnnealItemTP::nmkAnnealItemTP() = default;

nmkAnnealItemTP::~nmkAnnealItemTP() = default;

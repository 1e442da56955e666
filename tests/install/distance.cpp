// distance.cpp: a formula of a public header that a compiler could fuse into other bits.

#include <geometry/giPoint3.h>

double distance_between(const giPoint3& a, const giPoint3& b) { return a.distance(b); }

#include <nmkprogressbreak/nmkProgressBreak.h>

int nmkProgressBreak::send_progress_bar_to_0(const char*) { return 0; }

void nmkProgressBreak::set_range(double) {}

int nmkProgressBreak::increment() { return 0; }

int nmkProgressBreak::jump_to(double) { return 0; }

int nmkProgressBreak::send_progress_bar_to_100() { return 0; }

nmkProgressBreak::~nmkProgressBreak() = default;

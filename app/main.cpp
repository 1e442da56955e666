// main: the command-line tool nmk.

#include <iostream>
#include <string>
#include <vector>

#include "tool/run_tool.h"

int main(int count, char** arguments) {
    return nmk_app::run_tool({arguments + (count > 0 ? 1 : 0), arguments + count}, std::cout,
                             std::cerr);
}

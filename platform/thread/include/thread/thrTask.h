// thrTask: a piece of work that a queue of tasks performs on one of its threads.
#pragma once

#include <utils/utExport.h>

class UT_EXPORT thrTask {
  public:
    /// Performs the work; the meaning of the result is that of the derived class.
    virtual int do_it() = 0;
    virtual ~thrTask();

  protected:
    thrTask() = default;
    thrTask(const thrTask&) = default;
    thrTask& operator=(const thrTask&) = default;
};

#include <thread/thrTask.h>

thrTask::~thrTask() = default;

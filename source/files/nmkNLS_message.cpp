#include <nmktoolbox/files/nmkNLS_message.h>

namespace {

const char* (*message_callback)(const char*, void*) = nullptr;
void* message_data = nullptr;

}  // namespace

const char* nmkNLS_get_translated_message(const char* text) {
    // Deliberate: without data the callback isn't called, even if it needs none.
    if (message_callback == nullptr || message_data == nullptr) {
        return text;
    }
    return message_callback(text, message_data);
}

void nmkNLS_message_set_callback(const char* (*callback)(const char*, void*), void* data) {
    message_callback = callback;
    message_data = data;
}

#include <nmktoolbox/files/nmkreadline.h>

#include <sstream>

std::istream& nmkreadline(std::istream& stream, utString& line, char delimiter,
                          int skip_delimiter) {
    std::stringbuf text;
    stream.get(text, delimiter);
    if (stream.rdstate() == std::ios_base::failbit) {
        stream.clear();  // an empty line
    }
    // Behind the end of an unterminated line a look at the next character would fail the stream.
    if (skip_delimiter == 1 && stream.good() &&
        stream.peek() == std::istream::traits_type::to_int_type(delimiter)) {
        stream.get();
    }
    line = utString(text.str());
    return stream;
}

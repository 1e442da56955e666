// html_frame: the frame of every HTML page of the tool: head, style and heading.

#include "draw/html_frame.h"

#include "text/escaped_text.h"

namespace nmk_draw {

namespace {

constexpr const char* style = R"(
body { margin: 0 auto; max-width: 1500px; padding: 1.5rem; color: #1f2933; background: #fff;
       font-family: 'Segoe UI', 'Helvetica Neue', Arial, sans-serif; }
h1 { font-size: 1.5rem; margin: 0 0 .25rem; overflow-wrap: anywhere; }
p { color: #52606d; }
figure { margin: 1rem 0; }
figure svg { width: 100%; height: auto; }
table { border-collapse: collapse; font-variant-numeric: tabular-nums; }
th, td { padding: .35rem .9rem; text-align: right; }
th:first-child, td:first-child { text-align: left; }
thead tr:last-child th { font-weight: 400; color: #52606d; border-bottom: 1px solid #c5ccd4; }
tfoot td { font-weight: 700; border-top: 1px solid #c5ccd4; }
)";

}  // namespace

std::string html_frame(const std::string& title, const std::string& heading,
                       const std::string& content) {
    std::string page = "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\"/>\n";
    page += "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\"/>\n";
    page += "<title>" + nmk_text::xml_text(title) + "</title>\n";
    page += std::string("<style>") + style + "</style>\n</head>\n<body>\n";
    page += "<h1>" + nmk_text::xml_text(heading) + "</h1>\n" + content;
    return page + "</body>\n</html>\n";
}

}  // namespace nmk_draw

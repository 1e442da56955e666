// html_frame: the frame of every HTML page of the tool: head, style, heading and scripts.

#include "draw/html_frame.h"

#include "draw/page_texts.h"
#include "text/escaped_text.h"

namespace nmk_draw {

namespace {

std::string policy() {
    return "default-src 'none'; style-src '" + std::string(page_style_hash()) + "'; script-src '" +
           std::string(page_script_hash()) + "'; base-uri 'none'; form-action 'none'";
}

}  // namespace

std::string html_frame(const std::string& title, const std::string& heading,
                       const std::string& content) {
    std::string page = "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\"/>\n";
    page += "<meta http-equiv=\"Content-Security-Policy\" content=\"" + policy() + "\"/>\n";
    page += "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\"/>\n";
    page += "<meta name=\"color-scheme\" content=\"light dark\"/>\n";
    page += "<title>" + nmk_text::xml_text(title) + "</title>\n";
    page += "<style>" + std::string(page_style()) + "</style>\n</head>\n<body>\n";
    page += "<h1>" + nmk_text::xml_text(heading) + "</h1>\n" + content;
    page += "<script>" + std::string(page_script()) + "</script>\n";
    return page + "</body>\n</html>\n";
}

}  // namespace nmk_draw

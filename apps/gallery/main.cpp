// tovi_gallery [output.html]: writes the component gallery to one HTML file (by default
// tovi_gallery.html in the working directory) to open in any browser.

#include <cstdio>
#include <fstream>
#include <string>

#include "Gallery.hpp"

int main(int argc, char** argv) {
    const std::string path = argc > 1 ? argv[1] : "tovi_gallery.html";
    if (path == "-h" || path == "--help" || argc > 2) {
        std::fprintf(stderr, "usage: tovi_gallery [output.html]\n");
        return argc > 2 ? 2 : 0;
    }
    const std::string html = tovi::gallery::renderGalleryHtml();
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << html;
    out.close();
    if (!out) {
        std::fprintf(stderr, "tovi_gallery: cannot write %s\n", path.c_str());
        return 1;
    }
    std::printf("%s (%zu bytes)\n", path.c_str(), html.size());
    return 0;
}

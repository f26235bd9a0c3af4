#include "Korvane/MimeType.hpp"

#include <algorithm>
#include <array>
#include <utility>

namespace korvane {
namespace {

// Sorted by extension for binary search.
constexpr std::array<std::pair<std::string_view, std::string_view>, 40> kTable{{
    {"7z", "application/x-7z-compressed"},
    {"aac", "audio/aac"},
    {"avi", "video/x-msvideo"},
    {"bmp", "image/bmp"},
    {"css", "text/css"},
    {"csv", "text/csv"},
    {"doc", "application/msword"},
    {"docx", "application/vnd.openxmlformats-officedocument.wordprocessingml.document"},
    {"gif", "image/gif"},
    {"gz", "application/gzip"},
    {"heic", "image/heic"},
    {"htm", "text/html"},
    {"html", "text/html"},
    {"ico", "image/vnd.microsoft.icon"},
    {"jpeg", "image/jpeg"},
    {"jpg", "image/jpeg"},
    {"js", "text/javascript"},
    {"json", "application/json"},
    {"m4a", "audio/mp4"},
    {"mov", "video/quicktime"},
    {"mp3", "audio/mpeg"},
    {"mp4", "video/mp4"},
    {"pdf", "application/pdf"},
    {"pem", "application/x-pem-file"},
    {"png", "image/png"},
    {"ppt", "application/vnd.ms-powerpoint"},
    {"pptx", "application/vnd.openxmlformats-officedocument.presentationml.presentation"},
    {"rtf", "text/rtf"},
    {"svg", "image/svg+xml"},
    {"tar", "application/x-tar"},
    {"tif", "image/tiff"},
    {"tiff", "image/tiff"},
    {"txt", "text/plain"},
    {"wav", "audio/wav"},
    {"webp", "image/webp"},
    {"xls", "application/vnd.ms-excel"},
    {"xlsx", "application/vnd.openxmlformats-officedocument.spreadsheetml.sheet"},
    {"xml", "application/xml"},
    {"yaml", "application/yaml"},
    {"zip", "application/zip"},
}};

static_assert(std::is_sorted(kTable.begin(), kTable.end()));

}  // namespace

std::string mimeTypeForExtension(std::string_view extension) {
    std::string lower(extension);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char c) { return static_cast<char>(c >= 'A' && c <= 'Z' ? c + 32 : c); });
    auto it = std::lower_bound(kTable.begin(), kTable.end(), lower,
                               [](const auto& entry, const std::string& key) { return entry.first < key; });
    if (it != kTable.end() && it->first == lower) return std::string(it->second);
    return std::string(kDefaultMimeType);
}

std::string mimeTypeForFile(const platform::Url& fileUrl) {
    return mimeTypeForExtension(fileUrl.pathExtension());
}

}  // namespace korvane

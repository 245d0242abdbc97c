// JSON requests of the image preview window from untrusted bytes: parsed as a host would parse
// them, then read by the window's entry. Every picture read must carry a URL and sizes of zero
// or more, and the index must point into the list.

#include "FuzzApp.h"

#include <LxUIKit/ImagePreview/LxImagePreviewWnd.h>

#include <json/json.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <string>

namespace {

void Run(const std::string& text) {
    Json::CharReaderBuilder builder;
    builder["stackLimit"] = 256;
    const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
    Json::Value root;
    std::string errors;
    try {
        if (!reader->parse(text.data(), text.data() + text.size(), &root, &errors))
            return;
    } catch (const std::exception&) {
        return;  // the host's parser refused it; the window never sees it
    }
    QVector<std::shared_ptr<ImageInfo>> images;
    int index = -1;
    const bool ok = CLxImagePreviewWnd::GetParamsData(root, images, index);
    if (ok != !images.isEmpty() || (ok && (index < 0 || index >= images.size()))) {
        std::fprintf(stderr, "fuzz_preview_json: %d pictures, index %d, answer %d\n", int(images.size()), index,
                     int(ok));
        std::abort();
    }
    for (const auto& sp : images) {
        if (!sp || sp->strUrl.isEmpty() || sp->i32Width < 0 || sp->i32Height < 0) {
            std::fprintf(stderr, "fuzz_preview_json: a picture without URL or with a negative size\n");
            std::abort();
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    lx_fuzz::App();
    try {
        Run(std::string(reinterpret_cast<const char*>(data), size));
    } catch (const std::exception& e) {
        std::fprintf(stderr, "fuzz_preview_json: exception: %s\n", e.what());
        std::abort();
    } catch (...) {
        std::fprintf(stderr, "fuzz_preview_json: unknown exception\n");
        std::abort();
    }
    return 0;
}

#include <LxUIKit/ImagePreview/LxImagePreviewDefine.h>

#include <atomic>

namespace {
std::atomic<uint64_t> g_u64NextUniqueId{1};
}  // namespace

ImageInfo::ImageInfo() : u64UniqueId(g_u64NextUniqueId++) {}

ImageInfo::ImageInfo(const QString& url, int width, int height)
    : strUrl(url), i32Width(width), i32Height(height), u64UniqueId(g_u64NextUniqueId++) {}

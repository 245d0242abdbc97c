#include <LxCore/StrConv.h>

#define XXH_INLINE_ALL
#include <xxhash.h>

namespace core {
namespace str_conv {

uint64_t HashStrToUInt64(const std::string& str) { return XXH3_64bits(str.data(), str.size()); }

uint64_t HashBytesToUInt64(const void* data, size_t size) { return XXH3_64bits(data, size); }

uint64_t HashStrToUInt64(const QString& str) {
    const QByteArray utf8 = str.toUtf8();
    return XXH3_64bits(utf8.constData(), size_t(utf8.size()));
}

}  // namespace str_conv
}  // namespace core

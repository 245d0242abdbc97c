#pragma once
// String helpers. HashStrToUInt64 is XXH3-64 (seed 0) of the bytes: stable across runs, machines
// and versions, so hashes may be stored and compared.

#include <LxCore/LxCoreExport.h>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <string>

namespace core {
namespace str_conv {

LXCORE_EXPORT uint64_t HashStrToUInt64(const std::string& str);
LXCORE_EXPORT uint64_t HashStrToUInt64(const QString& str);  // hashes the UTF-8 form
// The same hash over raw bytes: HashBytesToUInt64(s.data(), s.size()) == HashStrToUInt64(s).
LXCORE_EXPORT uint64_t HashBytesToUInt64(const void* data, size_t size);

}  // namespace str_conv
}  // namespace core

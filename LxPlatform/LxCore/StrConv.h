#pragma once
// String helpers. HashStrToUInt64 is XXH3-64 (seed 0) of the bytes: stable across runs, machines
// and versions, so hashes may be stored and compared.

#include <QString>

#include <cstddef>
#include <cstdint>
#include <string>

namespace core {
namespace str_conv {

uint64_t HashStrToUInt64(const std::string& str);
uint64_t HashStrToUInt64(const QString& str);  // hashes the UTF-8 form
// The same hash over raw bytes: HashBytesToUInt64(s.data(), s.size()) == HashStrToUInt64(s).
uint64_t HashBytesToUInt64(const void* data, size_t size);

}  // namespace str_conv
}  // namespace core

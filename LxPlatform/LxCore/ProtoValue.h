#pragma once
// CProtoValue: a keyed value tree for storage and transport, a thin layer over Json::Value.
// Missing keys read as empty / zero; reading never throws.

#include <json/value.h>

#include <cstdint>
#include <string>

namespace core {

class CProtoValue {
public:
    CProtoValue();  // an empty object
    CProtoValue(int v);
    CProtoValue(unsigned int v);
    CProtoValue(long v);
    CProtoValue(unsigned long v);
    CProtoValue(long long v);
    CProtoValue(unsigned long long v);
    CProtoValue(bool v);
    CProtoValue(double v);
    CProtoValue(const std::string& v);
    CProtoValue(const char* v);
    explicit CProtoValue(const Json::Value& v);

    CProtoValue& operator=(const CProtoValue&) = default;

    // Object access; a non-object value becomes an object on write.
    CProtoValue& operator[](const char* key);
    CProtoValue operator[](const char* key) const;
    bool isMember(const char* key) const;
    bool isNull() const;

    int32_t asInt32() const;
    int64_t asInt64() const;
    uint32_t asUInt32() const;
    uint64_t asUInt64() const;
    bool asBool() const;
    double asDouble() const;
    std::string asString() const;

    const Json::Value& json() const;
    std::string toJsonString() const;
    // Parses JSON text; on failure returns false and leaves the value empty.
    bool fromJsonString(const std::string& text);

    bool operator==(const CProtoValue& o) const;

private:
    // The only member: a CProtoValue is pointer-interconvertible with its Json::Value, which lets
    // operator[] hand out references to nodes inside the tree.
    Json::Value m_value;
};

}  // namespace core

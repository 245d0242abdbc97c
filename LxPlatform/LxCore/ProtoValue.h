#pragma once
// CProtoValue: a keyed value tree for storage and transport, a thin layer over Json::Value.
// Missing keys read as empty / zero. No call throws: jsoncpp's exceptions (out-of-range numbers,
// values of another kind, over-deep JSON) never leave this class, and no reader has undefined
// behaviour, whatever the value holds.
//
// Number readers, all alike:
//  - a number inside the result type's range reads as itself; a fraction is cut toward zero
//    (2.9 -> 2, -2.9 -> -2);
//  - a number beyond the range reads as the nearest end of the range (saturation): 1e300 and
//    +inf give the maximum, -1e300 and -inf the minimum, and any negative number gives 0 for the
//    unsigned readers;
//  - NaN, null, missing keys, strings, booleans, arrays and objects read as 0.

#include <LxCore/LxCoreExport.h>
#include <json/value.h>

#include <cstdint>
#include <map>
#include <memory>
#include <string>

namespace core {

class LXCORE_EXPORT CProtoValue {
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
    CProtoValue(const CProtoValue& o);
    CProtoValue(CProtoValue&& o) noexcept;
    CProtoValue& operator=(const CProtoValue& o);
    CProtoValue& operator=(CProtoValue&& o) noexcept;
    ~CProtoValue();

    // Object access; a non-object value becomes an object on write. The reference stays valid
    // while this value lives and stays an object.
    CProtoValue& operator[](const char* key);
    CProtoValue operator[](const char* key) const;
    bool isMember(const char* key) const;
    bool isNull() const;

    int32_t asInt32() const;    // saturates to [INT32_MIN, INT32_MAX]
    int64_t asInt64() const;    // saturates to [INT64_MIN, INT64_MAX]
    uint32_t asUInt32() const;  // saturates to [0, UINT32_MAX]
    uint64_t asUInt64() const;  // saturates to [0, UINT64_MAX]
    // A boolean as itself; a number is true when it is not 0 (NaN is false); anything else false.
    bool asBool() const;
    // Any number as a double (large integers rounded to the nearest double); anything else 0.
    double asDouble() const;
    // A string as its bytes; a number or boolean in jsoncpp's text form; anything else empty.
    std::string asString() const;

    // The value as a Json::Value; for an object, built on each call and valid until the next.
    const Json::Value& json() const;
    // Compact JSON text; empty if jsoncpp cannot write the value.
    std::string toJsonString() const;
    // Parses JSON text (nesting is bounded by jsoncpp's stack limit); on failure returns false
    // and leaves the value an empty object.
    bool fromJsonString(const std::string& text);

    bool operator==(const CProtoValue& o) const;

private:
    // An object holds its members as values of this class, so operator[] can hand out references
    // to nodes inside the tree; anything else (null, number, string, boolean, array) is m_value.
    bool m_bObject = false;
    std::map<std::string, std::unique_ptr<CProtoValue>> m_members;
    Json::Value m_value;
    mutable Json::Value m_json;  // json() of an object
};

}  // namespace core

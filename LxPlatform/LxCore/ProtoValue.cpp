#include <LxCore/ProtoValue.h>

#include <json/reader.h>
#include <json/writer.h>

#include <cmath>
#include <limits>
#include <memory>
#include <type_traits>
#include <utility>

namespace core {

CProtoValue::CProtoValue() : m_bObject(true) {}
CProtoValue::CProtoValue(int v) : m_value(v) {}
CProtoValue::CProtoValue(unsigned int v) : m_value(v) {}
CProtoValue::CProtoValue(long v) : m_value(Json::Int64(v)) {}
CProtoValue::CProtoValue(unsigned long v) : m_value(Json::UInt64(v)) {}
CProtoValue::CProtoValue(long long v) : m_value(Json::Int64(v)) {}
CProtoValue::CProtoValue(unsigned long long v) : m_value(Json::UInt64(v)) {}
CProtoValue::CProtoValue(bool v) : m_value(v) {}
CProtoValue::CProtoValue(double v) : m_value(v) {}
CProtoValue::CProtoValue(const std::string& v) : m_value(v) {}
CProtoValue::CProtoValue(const char* v) : m_value(v ? v : "") {}
CProtoValue::CProtoValue(const Json::Value& v) {
    if (!v.isObject()) {
        m_value = v;
        return;
    }
    m_bObject = true;
    for (const std::string& key : v.getMemberNames())
        m_members[key] = std::make_unique<CProtoValue>(v[key]);
}

CProtoValue::CProtoValue(const CProtoValue& o) : m_bObject(o.m_bObject), m_value(o.m_value) {
    for (const auto& member : o.m_members)
        m_members[member.first] = std::make_unique<CProtoValue>(*member.second);
}

CProtoValue::CProtoValue(CProtoValue&& o) noexcept = default;
CProtoValue::~CProtoValue() = default;

CProtoValue& CProtoValue::operator=(const CProtoValue& o) {
    if (this != &o) {
        CProtoValue copy(o);
        *this = std::move(copy);
    }
    return *this;
}

CProtoValue& CProtoValue::operator=(CProtoValue&& o) noexcept = default;

CProtoValue& CProtoValue::operator[](const char* key) {
    if (!m_bObject) {
        m_bObject = true;
        m_value = Json::Value();
    }
    std::unique_ptr<CProtoValue>& member = m_members[key ? key : ""];
    if (!member)
        member = std::make_unique<CProtoValue>(Json::Value());
    return *member;
}

CProtoValue CProtoValue::operator[](const char* key) const {
    const auto it = m_members.find(key ? key : "");
    if (it == m_members.end())
        return CProtoValue(Json::Value());
    return *it->second;
}

bool CProtoValue::isMember(const char* key) const { return m_members.count(key ? key : "") != 0; }
bool CProtoValue::isNull() const { return !m_bObject && m_value.isNull(); }

namespace {

// A double into an integer type: NaN is 0, fractions are cut toward zero, values beyond the
// type's range give its nearest end. The comparisons run in double, where both ends of every
// integer type used here are exact or round outward (2^63, 2^64), so the final cast is in range.
template <class T>
T SaturateDouble(double d) {
    if (std::isnan(d))
        return 0;
    if (d <= static_cast<double>(std::numeric_limits<T>::min()))
        return std::numeric_limits<T>::min();
    if (d >= static_cast<double>(std::numeric_limits<T>::max()))
        return std::numeric_limits<T>::max();
    return static_cast<T>(d);
}

template <class T>
T SaturateSigned(int64_t v) {
    if (v < 0 && (!std::is_signed<T>::value || v < static_cast<int64_t>(std::numeric_limits<T>::min())))
        return std::numeric_limits<T>::min();
    if (v > 0 && static_cast<uint64_t>(v) > static_cast<uint64_t>(std::numeric_limits<T>::max()))
        return std::numeric_limits<T>::max();
    return static_cast<T>(v);
}

template <class T>
T SaturateUnsigned(uint64_t v) {
    if (v > static_cast<uint64_t>(std::numeric_limits<T>::max()))
        return std::numeric_limits<T>::max();
    return static_cast<T>(v);
}

// The one place numbers are read: by the stored kind, never through jsoncpp's range-checked
// (throwing) conversions.
template <class T>
T ReadNumber(const Json::Value& v) {
    switch (v.type()) {
    case Json::intValue: return SaturateSigned<T>(v.asLargestInt());
    case Json::uintValue: return SaturateUnsigned<T>(v.asLargestUInt());
    case Json::realValue: return SaturateDouble<T>(v.asDouble());
    default: return 0;
    }
}

}  // namespace

int32_t CProtoValue::asInt32() const { return ReadNumber<int32_t>(m_value); }
int64_t CProtoValue::asInt64() const { return ReadNumber<int64_t>(m_value); }
uint32_t CProtoValue::asUInt32() const { return ReadNumber<uint32_t>(m_value); }
uint64_t CProtoValue::asUInt64() const { return ReadNumber<uint64_t>(m_value); }

bool CProtoValue::asBool() const {
    switch (m_value.type()) {
    case Json::booleanValue: return m_value.asBool();
    case Json::intValue: return m_value.asLargestInt() != 0;
    case Json::uintValue: return m_value.asLargestUInt() != 0;
    case Json::realValue: return m_value.asDouble() != 0.0 && !std::isnan(m_value.asDouble());
    default: return false;
    }
}

double CProtoValue::asDouble() const {
    switch (m_value.type()) {
    case Json::intValue: return static_cast<double>(m_value.asLargestInt());
    case Json::uintValue: return static_cast<double>(m_value.asLargestUInt());
    case Json::realValue: return m_value.asDouble();
    default: return 0.0;
    }
}

std::string CProtoValue::asString() const {
    try {
        switch (m_value.type()) {
        case Json::stringValue:
        case Json::intValue:
        case Json::uintValue:
        case Json::realValue:
        case Json::booleanValue: return m_value.asString();
        default: return std::string();
        }
    } catch (const std::exception&) {
        return std::string();
    }
}

const Json::Value& CProtoValue::json() const {
    if (!m_bObject)
        return m_value;
    m_json = Json::Value(Json::objectValue);
    for (const auto& member : m_members)
        m_json[member.first] = member.second->json();
    return m_json;
}

std::string CProtoValue::toJsonString() const {
    try {
        Json::StreamWriterBuilder b;
        b["indentation"] = "";
        return Json::writeString(b, json());
    } catch (const std::exception&) {
        return std::string();
    }
}

// jsoncpp throws for input nested deeper than its stack limit; that is bad input like any other.
bool CProtoValue::fromJsonString(const std::string& text) {
    Json::Value v;
    bool bOk = false;
    try {
        Json::CharReaderBuilder b;
        std::unique_ptr<Json::CharReader> reader(b.newCharReader());
        std::string errors;
        bOk = reader->parse(text.data(), text.data() + text.size(), &v, &errors);
    } catch (const std::exception&) {
        bOk = false;
    }
    *this = bOk ? CProtoValue(v) : CProtoValue();
    return bOk;
}

bool CProtoValue::operator==(const CProtoValue& o) const { return json() == o.json(); }

}  // namespace core

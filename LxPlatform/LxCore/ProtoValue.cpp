#include <LxCore/ProtoValue.h>

#include <json/reader.h>
#include <json/writer.h>

#include <memory>
#include <type_traits>

namespace core {

// operator[] hands out a node of the tree as a CProtoValue&: that needs the two types to be laid out
// alike. (Json::Value itself is not standard-layout with every compiler, so size and alignment are
// what can be checked.)
static_assert(sizeof(CProtoValue) == sizeof(Json::Value) && alignof(CProtoValue) == alignof(Json::Value),
              "CProtoValue must stay a plain overlay of Json::Value");

CProtoValue::CProtoValue() : m_value(Json::objectValue) {}
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
CProtoValue::CProtoValue(const Json::Value& v) : m_value(v) {}

CProtoValue& CProtoValue::operator[](const char* key) {
    if (!m_value.isObject())
        m_value = Json::Value(Json::objectValue);
    return reinterpret_cast<CProtoValue&>(m_value[key]);
}

CProtoValue CProtoValue::operator[](const char* key) const {
    if (!m_value.isObject() || !m_value.isMember(key))
        return CProtoValue(Json::Value());
    return CProtoValue(m_value[key]);
}

bool CProtoValue::isMember(const char* key) const { return m_value.isObject() && m_value.isMember(key); }
bool CProtoValue::isNull() const { return m_value.isNull(); }

// Conversions answer 0 / empty for values of another kind instead of throwing as jsoncpp does.
int32_t CProtoValue::asInt32() const {
    if (m_value.isInt())
        return m_value.asInt();
    if (m_value.isIntegral() || m_value.isDouble())
        return static_cast<int32_t>(m_value.asInt64());
    return 0;
}
int64_t CProtoValue::asInt64() const {
    if (m_value.isInt64())
        return m_value.asInt64();
    if (m_value.isUInt64())
        return static_cast<int64_t>(m_value.asUInt64());
    if (m_value.isDouble())
        return static_cast<int64_t>(m_value.asDouble());
    return 0;
}
uint32_t CProtoValue::asUInt32() const { return static_cast<uint32_t>(asUInt64()); }
uint64_t CProtoValue::asUInt64() const {
    if (m_value.isUInt64())
        return m_value.asUInt64();
    if (m_value.isInt64())
        return static_cast<uint64_t>(m_value.asInt64());
    if (m_value.isDouble())
        return static_cast<uint64_t>(m_value.asDouble());
    return 0;
}
bool CProtoValue::asBool() const { return m_value.isBool() ? m_value.asBool() : asInt64() != 0; }
double CProtoValue::asDouble() const { return m_value.isNumeric() ? m_value.asDouble() : 0.0; }
std::string CProtoValue::asString() const {
    if (m_value.isString())
        return m_value.asString();
    if (m_value.isNumeric() || m_value.isBool())
        return m_value.asString();
    return std::string();
}

const Json::Value& CProtoValue::json() const { return m_value; }

std::string CProtoValue::toJsonString() const {
    Json::StreamWriterBuilder b;
    b["indentation"] = "";
    return Json::writeString(b, m_value);
}

bool CProtoValue::fromJsonString(const std::string& text) {
    Json::CharReaderBuilder b;
    std::unique_ptr<Json::CharReader> reader(b.newCharReader());
    Json::Value v;
    std::string errors;
    if (!reader->parse(text.data(), text.data() + text.size(), &v, &errors)) {
        m_value = Json::Value(Json::objectValue);
        return false;
    }
    m_value = v;
    return true;
}

bool CProtoValue::operator==(const CProtoValue& o) const { return m_value == o.m_value; }

}  // namespace core

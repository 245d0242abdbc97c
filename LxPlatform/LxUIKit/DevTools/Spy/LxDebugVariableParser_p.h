#pragma once
// Text to QVariant for editing properties in the inspector. Understands bool ("true"/"false"/
// "1"/"0"), the integer and floating types, QString, QColor (any name QColor accepts), QSize
// ("120x30"), QPoint ("10,20"), QRect ("10,20 120x30"), QFont (QFont::toString form) and enums
// (a key name, or keys joined with "|" for flags, or a number). Anything else, or malformed text,
// is refused with a reason; the target is then left alone.
#include <QMetaEnum>
#include <QString>
#include <QVariant>

namespace devtools {
namespace spy {

bool ParseDebugVariable(const QString& text, int type, QVariant* out, QString* error,
                        const QMetaEnum& enumerator = QMetaEnum());
// The text form ParseDebugVariable reads back.
QString DebugVariableText(const QVariant& value, const QMetaEnum& enumerator = QMetaEnum());

}  // namespace spy
}  // namespace devtools

#include <LxUIKit/DevTools/Spy/LxDebugVariableParser_p.h>

#include <QColor>
#include <QFont>
#include <QPoint>
#include <QRect>
#include <QRegularExpression>
#include <QSize>

#include <limits>

namespace devtools {
namespace spy {
namespace {

bool ParseInts(const QString& text, const QRegularExpression& re, int n, int* values) {
    const QRegularExpressionMatch m = re.match(text.trimmed());
    if (!m.hasMatch())
        return false;
    for (int i = 0; i < n; ++i) {
        bool ok = false;
        values[i] = m.captured(i + 1).toInt(&ok);
        if (!ok)
            return false;
    }
    return true;
}

bool FitsRect(int origin, int extent) {
    const qint64 edge = qint64(origin) + extent - 1;
    return edge >= std::numeric_limits<int>::min() && edge <= std::numeric_limits<int>::max();
}

}  // namespace

bool ParseDebugVariable(const QString& text, int type, QVariant* out, QString* error, const QMetaEnum& enumerator) {
    QString reason;
    QVariant v;
    bool ok = false;
    const QString t = text.trimmed();
    if (enumerator.isValid()) {
        const int number = t.toInt(&ok);
        if (ok) {
            v = number;
        } else {
            const QByteArray keys = t.toLatin1();
            const int value = enumerator.isFlag() ? enumerator.keysToValue(keys.constData(), &ok)
                                                  : enumerator.keyToValue(keys.constData(), &ok);
            v = value;
            if (!ok)
                reason = QStringLiteral("\"%1\" is not a key of %2").arg(t, QLatin1String(enumerator.name()));
        }
    } else {
        switch (type) {
        case QMetaType::Bool:
            if (t.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0 || t == QLatin1String("1"))
                v = true, ok = true;
            else if (t.compare(QLatin1String("false"), Qt::CaseInsensitive) == 0 || t == QLatin1String("0"))
                v = false, ok = true;
            else
                reason = QStringLiteral("expected true or false");
            break;
        case QMetaType::Int: v = t.toInt(&ok); break;
        case QMetaType::UInt: v = t.toUInt(&ok); break;
        case QMetaType::LongLong: v = t.toLongLong(&ok); break;
        case QMetaType::ULongLong: v = t.toULongLong(&ok); break;
        case QMetaType::Double: v = t.toDouble(&ok); break;
        case QMetaType::Float: v = t.toFloat(&ok); break;
        case QMetaType::QString: v = text, ok = true; break;
        case QMetaType::QColor: {
            const QColor c(t);
            ok = c.isValid();
            v = c;
            if (!ok)
                reason = QStringLiteral("not a colour (use #rrggbb, #aarrggbb or a colour name)");
            break;
        }
        case QMetaType::QSize: {
            int n[2] = {};
            ok = ParseInts(t, QRegularExpression(QStringLiteral("^(-?\\d+)\\s*[x×,]\\s*(-?\\d+)$")), 2, n);
            if (ok)
                v = QSize(n[0], n[1]);
            else
                reason = QStringLiteral("expected WIDTHxHEIGHT");
            break;
        }
        case QMetaType::QPoint: {
            int n[2] = {};
            ok = ParseInts(t, QRegularExpression(QStringLiteral("^(-?\\d+)\\s*,\\s*(-?\\d+)$")), 2, n);
            if (ok)
                v = QPoint(n[0], n[1]);
            else
                reason = QStringLiteral("expected X,Y");
            break;
        }
        case QMetaType::QRect: {
            int n[4] = {};
            ok = ParseInts(
                t, QRegularExpression(QStringLiteral("^(-?\\d+)\\s*,\\s*(-?\\d+)\\s+(-?\\d+)\\s*[x×]\\s*(-?\\d+)$")), 4,
                n);
            if (!ok) {
                reason = QStringLiteral("expected X,Y WIDTHxHEIGHT");
            } else if (!FitsRect(n[0], n[2]) || !FitsRect(n[1], n[3])) {
                // QRect keeps the far edge (x + width - 1) as an int: refuse what it cannot hold.
                ok = false;
                reason = QStringLiteral("rectangle reaches past the integer range");
            } else {
                v = QRect(n[0], n[1], n[2], n[3]);
            }
            break;
        }
        case QMetaType::QFont: {
            QFont f;
            ok = !t.isEmpty() && f.fromString(t);
            v = f;
            if (!ok)
                reason = QStringLiteral("not a font description");
            break;
        }
        default:
            reason = QStringLiteral("values of type %1 cannot be edited here")
                         .arg(QLatin1String(QMetaType::typeName(type) ? QMetaType::typeName(type) : "?"));
            break;
        }
        if (!ok && reason.isEmpty())
            reason = QStringLiteral("\"%1\" is not a valid %2").arg(t, QLatin1String(QMetaType::typeName(type)));
    }
    if (!ok) {
        if (error)
            *error = reason;
        return false;
    }
    if (out)
        *out = v;
    return true;
}

QString DebugVariableText(const QVariant& value, const QMetaEnum& enumerator) {
    if (enumerator.isValid()) {
        const int i = value.toInt();
        const QByteArray keys = enumerator.isFlag() ? enumerator.valueToKeys(i) : QByteArray(enumerator.valueToKey(i));
        return keys.isEmpty() ? QString::number(i) : QString::fromLatin1(keys);
    }
    switch (int(value.type())) {
    case QMetaType::Bool: return value.toBool() ? QStringLiteral("true") : QStringLiteral("false");
    case QMetaType::QColor: {
        const QColor c = value.value<QColor>();
        return c.name(c.alpha() == 255 ? QColor::HexRgb : QColor::HexArgb);
    }
    case QMetaType::QSize: {
        const QSize s = value.toSize();
        return QStringLiteral("%1x%2").arg(s.width()).arg(s.height());
    }
    case QMetaType::QPoint: {
        const QPoint p = value.toPoint();
        return QStringLiteral("%1,%2").arg(p.x()).arg(p.y());
    }
    case QMetaType::QRect: {
        const QRect r = value.toRect();
        return QStringLiteral("%1,%2 %3x%4").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height());
    }
    case QMetaType::QFont: return value.value<QFont>().toString();
    default: break;
    }
    if (value.canConvert<QString>())
        return value.toString();
    return QStringLiteral("<%1>").arg(QLatin1String(value.typeName() ? value.typeName() : "invalid"));
}

}  // namespace spy
}  // namespace devtools

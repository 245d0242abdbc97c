#pragma once
// Texts of the developer tools. They are Chinese in every language; they still pass through the
// translator (context "LxDevTools"), so a host may translate them and the gallery can check that
// every text it shows came from one.
#include <QCoreApplication>
#include <QString>

inline QString DevText(const char* text) { return QCoreApplication::translate("LxDevTools", text); }

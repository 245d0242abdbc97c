#pragma once
// Captured /proc/self files (stat, statm, io, net/netstat) for the application listener's tests:
// "t0" and "t1" are two readings of one process a second apart, "partial" lacks or breaks some.
#include <QString>

namespace lxtest {
// Folder of one captured reading, e.g. ProcFixtureDir("t0").
QString ProcFixtureDir(const QString& name);
}  // namespace lxtest

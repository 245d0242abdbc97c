#include "ProcFixtures.h"

namespace lxtest {
QString ProcFixtureDir(const QString& name) { return QStringLiteral(LX_TEST_FIXTURE_DIR "/proc/") + name; }
}  // namespace lxtest

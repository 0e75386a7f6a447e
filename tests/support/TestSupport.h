#pragma once

#include <QByteArray>
#include <QRandomGenerator>
#include <QString>

// Small helpers shared by the test executables.
namespace TestSupport {

// Writes an executable shell script (a stand-in tool) and returns its path.
QString writeScript(const QString& path, const QByteArray& body);

// Writes a file, creating its folder; returns false on failure.
bool writeFile(const QString& path, const QByteArray& contents);

QByteArray readFile(const QString& path);

// A random generator for one test: seeded from VELDTONE_TEST_SEED when set, else afresh. A test
// that fails prints the seed, so the same run can be repeated.
class SeededRandom : public QRandomGenerator
{
public:
    SeededRandom();
    ~SeededRandom();
    SeededRandom(const SeededRandom&) = delete;
    SeededRandom& operator=(const SeededRandom&) = delete;

private:
    explicit SeededRandom(quint32 seed);
    quint32 m_seed;
};

} // namespace TestSupport

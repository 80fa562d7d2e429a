#include <QDirIterator>
#include <QFile>
#include <QTextStream>

#include "fuzzing.h"

/// Runs a target over the files in the folders named, without a fuzzer.
int main(int argc, char* argv[])
{
    int inputs = 0;
    for (int i = 1; i < argc; ++i) {
        QDirIterator files(argv[i], QDir::Files);
        while (files.hasNext()) {
            QFile file(files.next());
            Require(file.open(QIODevice::ReadOnly), "an input can be read");
            const QByteArray content = file.readAll();
            LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(content.constData()), content.size());
            ++inputs;
        }
    }
    QTextStream(stdout) << inputs << " inputs\n";
    return inputs > 0 ? 0 : 1;
}

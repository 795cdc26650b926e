// Replays a fuzz target's corpus: every file in the folders (or the files) named on the command
// line goes through the target once. Fails when nothing was found to replay.
#include "fuzz/fuzztarget.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cstdio>

int main(int argc, char *argv[])
{
    int replayed = 0;
    for (int i = 1; i < argc; ++i) {
        const QFileInfo argument(QString::fromLocal8Bit(argv[i]));
        const QFileInfoList files = argument.isDir()
            ? QDir(argument.filePath()).entryInfoList(QDir::Files, QDir::Name)
            : QFileInfoList {argument};
        for (const QFileInfo &path : files) {
            QFile file(path.filePath());
            if (!file.open(QIODevice::ReadOnly)) {
                std::fprintf(stderr, "cannot read %s\n", qPrintable(path.filePath()));
                return 1;
            }
            const QByteArray bytes = file.readAll();
            LLVMFuzzerTestOneInput(
                reinterpret_cast<const uint8_t *>(bytes.constData()), size_t(bytes.size()));
            ++replayed;
        }
    }
    std::printf("%d inputs replayed\n", replayed);
    return replayed > 0 ? 0 : 1;
}

// Saves a document with some of the standard streams closed:
//     save_without_streams DESCRIPTORS PATH TEXT
// DESCRIPTORS has the bit 1 << n for each descriptor n to close. The status says what the save
// said.
#include <unistd.h>

#include <QString>
#include <cstdlib>

#include "documentfiles.h"

int main(int argc, char *argv[])
{
    if (argc != 4)
        return 2;
    const int descriptors = std::atoi(argv[1]);
    const QString path = QFile::decodeName(argv[2]);
    const TextPrinterDocument document = documentfiles::documentOf(QString::fromUtf8(argv[3]));
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if ((descriptors >> descriptor & 1) != 0)
            ::close(descriptor);
    }
    return document.saveToFile(path) ? 0 : 1;
}

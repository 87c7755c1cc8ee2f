#pragma once

#include <QString>
#include <QStringList>
#include <QtGlobal>

#include "printerdocs/textprinterdocument.h"
#include "printerslib/drivers/drivers_export.h"

namespace printerslib::drivers {

/// Looks at the four files of a document before they are opened.
///
/// TextPrinterDocument opens what stands at the names, whatever it is: a link that somebody else
/// put there makes a save overwrite the file that it leads to, a FIFO stops it for ever, and a
/// device takes all memory. So a document's folder belongs to the service alone (mode 0700), and a
/// service that can't be sure looks first: these operations refuse what isn't its own.
///
/// Between the look and the opening nobody but the user itself and root can change what was looked
/// at, as long as the folders above let nobody else rename the document's folder.
///
/// All operations are free of state. Faults are in English, name the file or folder, and are empty
/// if there is none. Two savers of one path are kept apart by the caller.
class PRINTERSLIB_DRIVERS_EXPORT DocumentFiles
{
public:
    /// What a look is for.
    enum Use {
        ToSave,
        ToLoad,
    };

    /// The greatest size in bytes of a file that is loaded.
    static constexpr qint64 greatestSize = 16LL * 1024 * 1024;

    /// The names of a document's files: the document, its checksum, and the same of the backup.
    static QStringList namesOf(const QString &path);

    /// What is wrong with the folder in which the files of `path` lie: it is missing or no folder,
    /// it isn't that of the process's effective user, or its group or all users may write to it.
    static QString faultOfFolder(const QString &path);

    /// What is wrong with one file: it is no regular file, it isn't that of the process's effective
    /// user, it has further names (hard links), or, for a load, it is larger than greatestSize. No
    /// file is no fault.
    static QString faultOfFile(const QString &fileName, Use use);

    /// The first fault of a document's path, its folder and its four files. A path to save under is
    /// absolute and holds no backslash, line feed or carriage return, as no load would find it.
    static QString faultOf(const QString &path, Use use);

    /// Saves a document and makes sure that it was kept: looks, saves, looks again, loads, and
    /// compares with what the map form gives back of the document. Gives what went wrong, and
    /// nothing if a load gives the document from now on. Takes as long as
    /// TextPrinterDocument::saveToFile().
    static QString save(const TextPrinterDocument &document, const QString &path);

    /// Looks, and loads. Gives what went wrong; the document is unchanged then, unless a copy had
    /// the right checksum and held no document.
    static QString load(TextPrinterDocument &document, const QString &path);

    DocumentFiles() = delete;
};

}  // namespace printerslib::drivers

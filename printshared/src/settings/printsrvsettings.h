#pragma once

#include <QString>

#include "hearth/initconfig.h"
#include "printerslib_export.h"

/// Paths and state interval of the print service, on top of the system's configuration file,
/// /opt/tarnwick/etc/tarn.conf.
///
/// Construction creates the service's data folder and the folder of the document images where they
/// are missing, writable for all users; a folder that can't be created is logged and otherwise
/// ignored. The object holds nothing of its own: each user makes one when it needs one, on any
/// thread.
class PRINTERSLIB_EXPORT PrintSrvSettings : public hearth::InitConfig
{
public:
    PrintSrvSettings();
    ~PrintSrvSettings() override;

    /// How often the print service publishes its state: 30000. The service gives it its unit.
    int stateInterval() const;
    /// Folder of the print service's own data, below the work folder.
    QString serviceDataPath() const;
    /// The service's file kpk.gen in that folder.
    QString kpkGenConfig() const;
    /// File for the image of the document of that number. Intended: not const, as the print service
    /// is linked against it in this form; test `operationsHaveTheirSignatures`.
    QString pngOutputFile(int number);
};

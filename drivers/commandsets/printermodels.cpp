#include "printerslib/drivers/printermodels.h"

#include <QFile>
#include <algorithm>

#include "commandsets/modelsfile_p.h"

namespace printerslib::drivers {

namespace {

// Of a file that is no file of models.
constexpr qint64 mostModelBytes = 1'048'576;

}  // namespace

PrinterModels::PrinterModels()
{
    const QStringList ids = PrinterProfile::modelIds();
    for (const QString &id : ids)
        m_profiles.append(*PrinterProfile::forModel(id));
}

QStringList PrinterModels::addFile(const QString &fileName)
{
    if (fileName.isEmpty())
        return {QStringLiteral("a file of models has to have a name")};
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return {QStringLiteral("%1: %2").arg(fileName, file.errorString())};
    const QByteArray json = file.read(mostModelBytes + 1);
    if (file.error() != QFile::NoError)
        return {QStringLiteral("%1: %2").arg(fileName, file.errorString())};
    if (json.size() > mostModelBytes)
        return {QStringLiteral("%1: longer than %2 bytes").arg(fileName).arg(mostModelBytes)};
    return add(json, fileName);
}

QStringList PrinterModels::add(const QByteArray &json, const QString &fileName)
{
    const ModelsFile file(json, fileName, m_profiles);
    for (const PrinterProfile &profile : file.profiles()) {
        auto *const same = std::find_if(
            m_profiles.begin(), m_profiles.end(),
            [&profile](const auto &known) { return known.modelId() == profile.modelId(); });
        if (same == m_profiles.end())
            m_profiles.append(profile);
        else
            *same = profile;
    }
    return file.errors();
}

QStringList PrinterModels::modelIds() const
{
    QStringList ids;
    for (const PrinterProfile &profile : m_profiles)
        ids.append(profile.modelId());
    return ids;
}

std::optional<PrinterProfile> PrinterModels::profile(const QString &modelId) const
{
    return ModelsFile::profileIn(m_profiles, modelId);
}

}  // namespace printerslib::drivers

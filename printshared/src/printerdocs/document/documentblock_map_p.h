#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QVariant>
#include <array>

#include "printerdocs/documentblock.h"

namespace documents {

/// Texts of arrays in Base64, of which those of equal arrays are mostly one: the formats of a
/// receipt's lines differ in little but their number.
class Base64Texts
{
public:
    QString of(const QByteArray &bytes);

private:
    struct Known
    {
        QByteArray bytes;
        QString text;
    };
    std::array<Known, 64> m_known;  ///< the last of each size, or of one that leaves the same
};

/// The map form of a block. Texts are those of all blocks of a document.
QMap<QString, QVariant> mapOf(const DocumentBlock &block, Base64Texts &texts);

}  // namespace documents

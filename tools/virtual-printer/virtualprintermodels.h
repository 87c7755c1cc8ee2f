#pragma once

#include <QByteArray>
#include <QList>
#include <QSerialPort>
#include <QString>
#include <QStringList>
#include <QVector>
#include <optional>

/// A request that a printer understands, and what it answers.
struct VirtualReply
{
    QByteArray request;
    /// Sent in turn, starting again after the last; an empty one, or none at all, is silence.
    QList<QByteArray> answers;
};

/// What a model speaks, and the line that it is set to unless told otherwise.
struct VirtualModel
{
    QString id;
    int baudRate = 0;
    QSerialPort::FlowControl flowControl = QSerialPort::NoFlowControl;
    QVector<VirtualReply> replies;
};

/// The models that a search can report, by their identifiers in the printer catalogue.
QStringList virtualModelIds();
/// Nothing for an identifier that is not among them.
std::optional<VirtualModel> virtualModel(const QString &id);

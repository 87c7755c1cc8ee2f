#pragma once

#include <QStringList>
#include <random>

/// Lines made of what means something in a template, put together at random.
class RandomLines
{
public:
    explicit RandomLines(unsigned seed) : m_engine(seed) {}

    int below(int limit) { return std::uniform_int_distribution<>(0, limit - 1)(m_engine); }
    QString line(const QStringList &parts)
    {
        QString text;
        for (int count = below(9); count > 0; --count)
            text += parts.at(below(parts.size()));
        return text;
    }
    QStringList lines(const QStringList &parts)
    {
        QStringList result;
        for (int count = 1 + below(6); count > 0; --count)
            result.append(line(parts));
        return result;
    }

private:
    std::mt19937 m_engine;
};

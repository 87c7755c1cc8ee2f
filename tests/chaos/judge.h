#pragma once

#include <printerslib/drivers/paper.h>

#include <QStringList>
#include <QVector>

#include "client.h"
#include "plan.h"
#include "queueclient.h"

namespace chaos {

/// How a job of an episode ended.
struct JobEnd
{
    ClientPlan plan;
    ClientReport report;
    bool hasHung = false;
    bool isTroubled = false;  ///< something befell the printer in its time

    QString toString() const;
};

/// What is said of the jobs and isn't true of the papers; empty if all is.
/// @param queue of an episode that has one
QStringList untruthsOf(const EpisodePlan &plan, const QVector<JobEnd> &ends,
                       const QVector<QueueReport> &queue,
                       const QVector<printerslib::drivers::Paper> &papers);

}  // namespace chaos

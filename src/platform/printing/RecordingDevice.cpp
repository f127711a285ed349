#include "PageDevice.h"

#include <QStringList>

using namespace Qt::Literals::StringLiterals;

void RecordingDevice::put(const std::vector<Page>& pages, const QString& /*documentName*/)
{
    documents_.push_back(pages);
}

QStringList RecordingDevice::lines() const
{
    QStringList lines;
    if (documents_.empty())
        return lines;
    for (const Page& page : documents_.back()) {
        if (&page != &documents_.back().front())
            lines += u"--- page"_s;
        for (const TextRun& run : page)
            lines += QString::number(run.x) + u',' + QString::number(run.y) + u' ' +
                     QString::number(run.size) + (run.bold ? u" bold "_s : u" "_s) + run.text;
    }
    return lines;
}

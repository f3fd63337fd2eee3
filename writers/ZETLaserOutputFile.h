#pragma once

#include <QFile>
#include <QMap>
#include <QString>

/*! A file that a writer makes, which remembers whether it became whole. The writers don't look at that: a stream on a
 *  file that couldn't be opened writes nothing, and the job goes on. Whoever ran the job asks afterwards. */
class ZETLaserOutputFile final : public QFile
{
public:
    /*! What the system said first of a file that isn't whole, by its name. */
    using Faults = QMap<QString, QString>;

    /*! \a jobFaults gets the fault of this file, and must outlive it. */
    explicit ZETLaserOutputFile(Faults& jobFaults, const QString& name = QString());
    ~ZETLaserOutputFile() override;

    bool open(OpenMode mode) override;
    void close() override;

protected:
    qint64 writeData(const char* data, qint64 size) override;

private:
    /*! Why the write that failed just now did so. */
    QString GetReasonOfWrite() const;
    void NoteFault(const QString& reason);

    Faults& faults;
};

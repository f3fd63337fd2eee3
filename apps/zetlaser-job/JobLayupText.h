#pragma once

#include "JobPlyTable.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>

#include <optional>

/*! \a text as JSON, with its quotes. */
QString QuoteJson(const QString& text);

/*! What a layup file holds beside the plies of a list, in mm. */
struct JobLayupFrame {
    QString name;
    QString toolFile; //!< as the layup file names it
    QString face;     //!< of the tool file, by name or by index; empty where it has one
    bool isFaceIndex = false;
    bool isReversed = false;
    std::optional<double> scale; //!< mm a unit of the tool file
    QList<double> rosetteOrigin{0.0, 0.0, 0.0};
    QList<double> rosetteX{1.0, 0.0, 0.0};
    QList<double> rosetteY{0.0, 1.0, 0.0};
};

/*! A layup file of a ply list, as text that people can read and complete: each ply on one line, in the order of
 *  laying. */
class JobLayupText
{
public:
    /*! \a curveKinds: "edge" or "wire" for each boundary of \a plies. */
    JobLayupText(const JobLayupFrame& frame, const QList<JobPlyRow>& plies, const QHash<QString, QString>& curveKinds);

    QByteArray GetBytes() const { return text.toUtf8(); }
    /*! The line of the list that the value at \a path of the layup file was made of; 0 if it was made of none. */
    int FindLine(const QString& path) const;

private:
    QString text;
    QHash<QString, int> lines; //!< of the list, by "layups[0].S1.P3" and "curves[0]"
};

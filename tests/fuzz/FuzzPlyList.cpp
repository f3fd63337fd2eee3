// Any bytes as a ply list: it is refused with one line for each fault, or the layup file that is made of it is JSON.

#include "FuzzTarget.h"

#include "apps/zetlaser-job/JobConsole.h"
#include "apps/zetlaser-job/JobError.h"
#include "apps/zetlaser-job/JobFaults.h"
#include "apps/zetlaser-job/JobLayupText.h"
#include "apps/zetlaser-job/JobPlyTable.h"
#include "openhost/layup/ZETOpenJson.h"

using namespace Qt::Literals::StringLiterals;

/*! Stands in for the tool's own, which would write millions of lines. */
void JobConsole::WriteMessage(const QString& severity, const QString& text)
{
    FuzzTarget::RequireOneLine(severity);
    FuzzTarget::RequireOneLine(text);
}

namespace
{
void CheckLayupText(const QList<JobPlyRow>& plies)
{
    QHash<QString, QString> curveKinds;
    for (const JobPlyRow& ply : plies)
        curveKinds.insert(ply.boundary, u"edge"_s);
    JobLayupFrame frame;
    frame.name = u"Fuzz"_s;
    frame.toolFile = u"tool.step"_s;
    const JobLayupText text(frame, plies, curveKinds);
    const ZETOpenJsonDocument document(u"fuzz.layup.json"_s, text.GetBytes()); // throws for what is no JSON
    FuzzTarget::Require(document.GetRoot().Has("layups") || plies.isEmpty(), "the layup file has the plies");
}
} // namespace

int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    const QString name = u"fuzz.csv"_s;
    FuzzTarget::WriteFile(name, data, size);
    try {
        JobFaults faults(name);
        const QList<JobPlyRow> plies = JobPlyTable::Read(name, faults);
        faults.Throw();
        CheckLayupText(plies);
    } catch (const JobError& error) {
        FuzzTarget::RequireOneLine(error.GetText());
    }
    return 0;
}

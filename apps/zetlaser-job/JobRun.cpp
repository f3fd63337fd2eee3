#include "JobRun.h"

#include "JobConsole.h"
#include "JobError.h"
#include "JobInputs.h"
#include "JobOutput.h"
#include "JobStaging.h"
#include "JobSteps.h"

#include "openhost/ZETComposites/ZETOpenComposites.h"

#include <ZETComposites/ZETCompRoot.h>
#include <ZETFeature/ZETFeatContainer.h>

#include <QCoreApplication>
#include <QFileInfo>
#include <QHash>

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

using namespace Qt::Literals::StringLiterals;

namespace
{
QString Translate(const char* text)
{
    return QCoreApplication::translate("zetlaser-job", text);
}

/*! What tells one file from another: its path without links. Case doesn't count, because it doesn't on every system
 *  that the files come to. */
QString GetKey(const QString& path)
{
    const QFileInfo file(path);
    return QFileInfo(file.absolutePath()).canonicalFilePath().append(u'/' + file.fileName()).toCaseFolded();
}

/*! All outputs of one model. */
class Run
{
public:
    explicit Run(const QList<JobSettings>& settings)
    {
        const QString settingsFile = settings.value(0).GetText(u"settings"_s);
        if (!settingsFile.isEmpty())
            inputs.Add(u"settings"_s, settingsFile);
        for (const JobSettings& one : settings) {
            const QString title = Translate("output %1 of %2").arg(entries.size() + 1).arg(settings.size());
            entries.push_back({title, std::make_unique<JobOutput>(one), std::nullopt});
        }
    }

    void Make(const QString& layupFile)
    {
        Each([](Entry& entry) { entry.output->PreparePlaces(); });
        if (HasOutputs())
            MakeFrom(layupFile);
        for (const Entry& entry : entries) {
            if (entry.output)
                TellResult(entry);
        }
        FailForAll();
    }

private:
    struct Entry {
        QString title;                     //!< "output 2 of 3"
        std::unique_ptr<JobOutput> output; //!< null once it has failed
        std::optional<JobError> failure;
    };

    bool IsSet() const { return entries.size() > 1; }

    bool HasOutputs() const
    {
        return std::any_of(entries.begin(), entries.end(), [](const Entry& entry) { return entry.output != nullptr; });
    }

    /*! Calls \a step for each output that hasn't failed yet. A single one that fails ends the job. */
    template <typename Step>
    void Each(Step step)
    {
        for (Entry& entry : entries) {
            try {
                if (entry.output)
                    step(entry);
            } catch (const std::exception&) {
                if (!IsSet())
                    throw;
                entry.failure = JobError::OfCurrentException();
                entry.output.reset();
                JobConsole::WriteMessage(Translate("error"), Translate("%1 failed with exit code %2: %3")
                                                                 .arg(entry.title)
                                                                 .arg(static_cast<int>(entry.failure->GetExit()))
                                                                 .arg(entry.failure->GetText()));
            }
        }
    }

    void MakeFrom(const QString& layupFile)
    {
        inputs.Add(u"layup"_s, layupFile);
        model = JobSteps::LoadModel(layupFile, [this](const QString& file) { inputs.Add(u"shape"_s, file); });
        JobConsole::KeepMessages();
        SetUp(*model.root);
        RefuseSharedFiles([](const JobOutput& output) { return output.GetPartFile(); });
        Each([this](Entry& entry) {
            if (IsSet())
                JobConsole::WriteMessage(entry.title, entry.output->GetName());
            entry.output->Make(inputs);
            JobConsole::TellRepeatedMessages();
        });
        // What files there are is known for certain only now: that depends on targets, materials and names of plies.
        RefuseSharedFiles([](const JobOutput& output) { return output.GetFiles(); });
        const JobStaging::InterruptionGuard guard;
        Each([](Entry& entry) { entry.output->Commit(); });
    }

    void SetUp(ZETCompRoot& root)
    {
        ZETCompMfgConfiguration* ownConfiguration = root.GetActiveMfgConfiguration();
        Each([&](Entry& entry) {
            if (root.GetActiveMfgConfiguration() != ownConfiguration) // that of the output before
                ZETOpenComposites::SetActiveMfgConfiguration(root, ownConfiguration);
            entry.output->SetUp(root);
        });
    }

    template <typename GetFiles>
    void RefuseSharedFiles(GetFiles getFiles) const
    {
        QHash<QString, const Entry*> owners;
        for (const Entry& entry : entries) {
            for (const QString& file : entry.output ? getFiles(*entry.output) : QStringList()) {
                const Entry* owner = std::exchange(owners[GetKey(file)], &entry);
                if (owner && owner != &entry)
                    throw JobError(JobExit::WrongInput, Translate("%1 and %2 would both write %3; nothing is written")
                                                            .arg(owner->title, entry.title, file));
            }
        }
    }

    void TellResult(const Entry& entry) const
    {
        if (IsSet())
            JobConsole::WriteResult(entry.title + u": "_s + entry.output->GetName());
        entry.output->TellResult();
    }

    void FailForAll() const
    {
        JobExit worst = JobExit::Written;
        int failed = 0;
        for (const Entry& entry : entries) {
            if (entry.failure) {
                worst = std::max(worst, entry.failure->GetExit());
                ++failed;
            }
        }
        if (failed > 0)
            throw JobError(worst, Translate("%1 of %2 outputs failed").arg(failed).arg(entries.size()));
    }

    JobInputs inputs;
    ZETOpenLayupModel model;
    std::vector<Entry> entries; // behind the model, so that they go first
};
} // namespace

void RunJob(const QString& layupFile, const QList<JobSettings>& outputs)
{
    Run(outputs).Make(layupFile);
}

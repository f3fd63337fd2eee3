// Any bytes as a settings file: it is refused with one line, or all that it says goes into the record of options.

#include "FuzzTarget.h"

#include "apps/zetlaser-job/JobError.h"
#include "apps/zetlaser-job/JobSettings.h"
#include "laser/ZETLaserOptions.h"

using namespace Qt::Literals::StringLiterals;

int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    const QString name = u"fuzz.settings.json"_s;
    FuzzTarget::WriteFile(name, data, size);
    JobSettings flags;
    flags.Set(u"settings"_s, name);
    try {
        for (const JobSettings& output : JobSettingsFile::Read(flags).GetOutputs(flags)) {
            ZETLaserOptions options;
            for (const JobSetting& setting : JobSettingTable::GetAll()) {
                if (setting.record.apply && output.Has(setting.key))
                    setting.record.apply(options, output.Get(setting.key));
            }
        }
    } catch (const JobError& error) {
        FuzzTarget::RequireOneLine(error.GetText());
    }
    return 0;
}

#include "panels/paper_output/job_checks.h"

#include "core/features/installable_options.h"
#include "panels/paper_output/paper_output_commands.h"
#include "platform/foundation/CFString.h"
#include "platform/toolbox/Notices.h"
#include "ui/localization.h"

namespace {

void TellMissingPasscode(CFBundleRef bundle) {
    CFOptionFlags response = 0;
    CFUserNotificationDisplayAlert(0, kCFUserNotificationCautionAlertLevel, nullptr, nullptr, nullptr,
                                   CopyLocalizedText(bundle, CFSTR("Invalid Secure Print Passcode Header")).get(),
                                   CopyLocalizedText(bundle, CFSTR("Invalid Secure Print Passcode Message")).get(),
                                   nullptr, nullptr, nullptr, &response);
}

}  // namespace

MissingForJob FindMissingForJob(const PaperOutputSettings& settings) {
    if (settings.job.jobType == kJobTypeSecurePrint && CFStringGetLength(settings.job.passcode.get()) == 0) {
        return MissingForJob::passcode;
    }
    // Without a fax card nothing is faxed, whoever the recipients are.
    if (settings.job.jobType == kJobTypeFax && getInstalledFeature(CFSTR("FaxKey")) &&
        (settings.faxRecipients == nullptr || settings.faxRecipients->count() == 0)) {
        return MissingForJob::faxRecipients;
    }
    return MissingForJob::nothing;
}

bool AskForWhatJobLacks(PMPDEContext paperOutput) {
    _PaperOutputContext* context = PaperOutputContext(paperOutput);
    switch (FindMissingForJob(context->settings)) {
        case MissingForJob::passcode:
            TellMissingPasscode(context->bundle);
            return true;
        case MissingForJob::faxRecipients:
            RunFaxSetup(context);
            return true;
        case MissingForJob::nothing:
            break;
    }
    return false;
}

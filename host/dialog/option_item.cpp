#include "host/dialog/option_item.h"

#include "host/settings/conflicts.h"
#include "platform/foundation/text.h"
#include "platform/toolbox/Controls.h"

void appendOption(MenuRef menu, CFStringRef title, const PrintSession& session, const std::string& mainKeyword,
                  const std::string& option, CFBundleRef texts) {
    AppendMenuItemTextWithCFString(menu, title, 0, 0, nullptr);
    if (const std::string obstacle = obstacleOf(session, texts, mainKeyword, option); !obstacle.empty()) {
        DisableMenuItem(menu, CountMenuItems(menu));
        HMSetMenuItemHelpContent(menu, CountMenuItems(menu), makeString(obstacle).get());
    }
}

#include "desktop/HelpTopic.h"

#include "app/HelpPages.h"
#include "desktop/tabLog.h"

#include <QWidget>

namespace kestrane {

std::string_view helpTopicOf(const QWidget* widget) {
    for (; widget != nullptr; widget = widget->parentWidget()) {
        if (const std::string_view topic = helpTopic(widget->objectName().toStdString()); !topic.empty()) return topic;
        const auto* const tabs = qobject_cast<const tabLog*>(widget);
        if (tabs != nullptr && tabs->HasLog()) return tabs->HelpTopic();
    }
    return kFirstHelpTopic;
}

} // namespace kestrane

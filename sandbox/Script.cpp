#include "sandbox/Script.h"

#include <algorithm>

namespace sandbox
{

void Script::answer(const QString& part, const QString& reply, int times)
{
    rules_.append({part.toUtf8(), reply, times});
}

std::optional<QString> Script::answerTo(const QByteArray& raw)
{
    for (auto& rule : rules_) {
        if (rule.times == 0 || !raw.contains(rule.part))
            continue;
        if (rule.times > 0)
            --rule.times;
        return rule.reply;
    }
    return std::nullopt;
}

bool Script::holds(const QByteArray& raw) const
{
    return std::any_of(held_.begin(), held_.end(),
                       [&raw](const auto& part) { return raw.contains(part.toUtf8()); });
}

} // namespace sandbox

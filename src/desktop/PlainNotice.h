#pragma once

#include <QString>

// A text as a notification service shows it as typed. Some services read "<" and "&" as markup, others don't
// and would show escapes; an invisible joiner behind the sign keeps both from seeing a tag or an entity.
QString plainNotice(const QString& text);

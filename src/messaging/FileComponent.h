#pragma once

#include <QString>

// `name` as one component of a path that can't leave its folder, with `suffix` behind it. Ordinary names
// stand as they are. What a component can't hold is written as "%" and two hexadecimal digits, and so is a
// "%" that would read as such, so that two names never share a file. A name too long for the file system
// keeps its beginning, followed by "%~" and its SHA-256.
QString fileComponent(const QString& name, const QString& suffix = {});

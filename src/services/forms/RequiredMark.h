#pragma once

class QLineEdit;

// Marks an empty field that must be filled by a tint and a word; the mark goes when the person fills the
// field.
void markRequired(QLineEdit& field);

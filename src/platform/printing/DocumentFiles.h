#pragma once

#include <QString>

// The user's documents folder, made where it is missing.
QString documentsFolder();

// A name for a file out of any text: without characters that some file system refuses, not hidden,
// not too long, never empty.
QString safeFileName(const QString& text);

// "<folder>/<name>.pdf", or with " (2)", " (3)" ... where that is taken.
QString unusedPdfPath(const QString& folder, const QString& name);

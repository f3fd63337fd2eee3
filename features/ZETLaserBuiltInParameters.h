#pragma once

#include <QStringList>

/*! The built-in macros of texts with their percent signs, in their order. Built on first use. */
const QStringList& GetBuiltInParameters();

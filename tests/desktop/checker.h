#pragma once

#include <QString>

class CPerson;

/// Compares what the widgets show with the state of the views, all of it; empty if they agree, otherwise the first
/// difference.
QString Compare(CPerson &person);

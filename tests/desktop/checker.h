#pragma once

#include <QString>

class CPerson;
class QWidget;

/// Compares what the widgets show with the state of the views, all of it; empty if they agree, otherwise the first
/// difference.
QString Compare(CPerson &person);

/// What a person could use in a widget and all within it but that has neither name nor description for those who don't
/// see it; empty if there is nothing.
QString Unnamed(QWidget &widget);

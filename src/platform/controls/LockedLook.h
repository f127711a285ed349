#pragma once

class QWidget;

// A locked box can be read and copied from; its ground tells that it takes no typing.
void showLocked(QWidget& widget, bool locked);

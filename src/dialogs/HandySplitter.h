// A splitter with narrow bars that can be taken hold of over the width that a hand needs.
#pragma once

#include <QSplitter>

namespace kestrane {

class HandySplitter : public QSplitter {
public:
    using QSplitter::QSplitter;

protected:
    QSplitterHandle* createHandle() override;
};

} // namespace kestrane

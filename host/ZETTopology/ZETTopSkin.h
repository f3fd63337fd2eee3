#pragma once

#include <ZETTopology/ZETTopDomain.h>

/*! A set of faces. */
class ZETHOST_EXPORT ZETTopSkin : public ZETTopDomain
{
    Q_OBJECT

public:
    ~ZETTopSkin() override;
};

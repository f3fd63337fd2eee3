#pragma once

#include <ZETHostGlobal.h>

#include <exception>

/*! Thrown by an operation that needs a direction and gets a vector of zero length. */
class ZETHOST_EXPORT ZETMathZeroMagnitudeVectorException : public std::exception
{
public:
    const char* what() const noexcept override { return "a direction is needed, and the vector has zero length"; }
};

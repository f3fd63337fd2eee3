#include <laser/ZETLaserGlobal.h>

#include <ZETHostGlobal.h>

#include <cstdio>

int main()
{
    std::puts("consumer runs");
    return 0;
}

// Plain types and versions.
#pragma once
#include <maya/MIOStream.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#define MAYA_API_VERSION 20190000
#define MAYA_APP_VERSION 2019

typedef unsigned long long MUint64;
typedef long long MInt64;
typedef short short2[2];
typedef short short3[3];
typedef int int2[2];
typedef int int3[3];
typedef long long2[2];
typedef long long3[3];
typedef float float2[2];
typedef float float3[3];
typedef float float4[4];
typedef double double2[2];
typedef double double3[3];
typedef double double4[4];
typedef void* (*MCreatorFunction)();

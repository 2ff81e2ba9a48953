// What reflection tables that vokgen writes include of the framework.
#pragma once

#include "Vok/Generated.h"
#include "Vok/ModuleInspectData.h"
#include "Vok/TypeData.h"
#include "Vok/detail/Calls.h"
#include "Vok/detail/CollectionOps.h"
#include "Vok/detail/Tables.h"

#include <cstddef>
#include <ios>

// Entity types are not of standard layout. They derive from Vok::Entity singly and without
// virtual bases, where every compiler that builds this code gives the offset that it uses itself.
#if defined( __GNUC__ )
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
#endif

/// The offset of a data member, for the rows of reflection tables.
#define VOK_OFFSET( type, member ) offsetof( type, member )

// The mark of what the shared library exports: it is built with hidden visibility, and only what
// carries VOK_EXPORT can be linked against. Templates and inline functions need no mark.
#pragma once

#define VOK_EXPORT [[gnu::visibility( "default" )]]

/// What stays inside the library although a public header declares it.
#define VOK_HIDDEN [[gnu::visibility( "hidden" )]]

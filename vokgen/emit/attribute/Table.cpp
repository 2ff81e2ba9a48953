// Which emitter serves which kind of attribute.
#include "vokgen/Printer.h"
#include "vokgen/emit/attribute/AttributeEmitter.h"

#include <array>

namespace VokGen {

using Model::AttributeKind;

namespace {

struct Kind {
   AttributeKind kind;
   const AttributeEmitter & ( *emitter )();
};

constexpr auto kinds = std::to_array< Kind >( {
      { AttributeKind::plain, plainEmitter },
      { AttributeKind::optional, optionalEmitter },
      { AttributeKind::constant, constantEmitter },
      { AttributeKind::constructorArgument, argumentEmitter },
      { AttributeKind::derived, derivedEmitter },
      { AttributeKind::flag, flagEmitter },
      { AttributeKind::function, functionEmitter },
      { AttributeKind::instantiate, instantiateEmitter },
      { AttributeKind::map, mapEmitter },
      { AttributeKind::set, setEmitter },
      { AttributeKind::children, childrenEmitter },
      { AttributeKind::child, childEmitter },
      { AttributeKind::references, referencesEmitter },
} );

} // namespace

const AttributeEmitter & emitterOf( const Model::Attribute & attribute )
{
   for ( const Kind & entry : kinds ) {
      if ( entry.kind == attribute.kind ) {
         return entry.emitter();
      }
   }
   throw InternalError( "no emitter for the kind of " + attribute.fullName() );
}

} // namespace VokGen

// By reflection: types that come with the data model are tested with it.
#include "tests/flowtrack-json/Trees.h"

#include "tools/flowtrack/json/Load.h"
#include "tools/flowtrack/json/Problem.h"
#include "tools/flowtrack/json/Shape.h"

#include <set>

using Vok::AttributeData;
using Vok::AttributeKind;
using Vok::Entity;
using Vok::TypeData;

namespace {

bool isPartOf( const AttributeData & a )
{
   return a.kind() == AttributeKind::children || a.kind() == AttributeKind::child;
}

/// Deletes what refers to entities outside of the tree, which no document can say.
void dropStrangers( Entity & e )
{
   for ( const AttributeData & a : e.typeData().attributes() ) {
      if ( !isPartOf( a ) && a.kind() != AttributeKind::references ) {
         continue;
      }
      for ( const Corvo::String & key :
            a.kind() == AttributeKind::child ? std::vector< Corvo::String >( 1 ) : a.keys( e ) ) {
         const EntityPtr member = a.child( e, key );
         if ( !member ) {
            continue;
         }
         bool stranger = &Vok::rootOf( *member ) != &Vok::rootOf( e );
         for ( const AttributeData & argument : member->typeData().constructorArguments() ) {
            stranger = stranger ||
                  ( FlowtrackJson::isReference( argument ) && argument.get( *member ).empty() );
         }
         if ( stranger ) {
            a.memberDel( e, key );
         } else if ( isPartOf( a ) ) {
            dropStrangers( *member );
         }
      }
   }
}

} // namespace

std::vector< std::string > rootTypes()
{
   std::set< std::string_view > children;
   std::vector< std::string > roots;
   for ( const auto & module : Corvo::ModuleInspectData::modules() ) {
      for ( const TypeData & type : module.types() ) {
         for ( const AttributeData & a : type.attributes() ) {
            if ( isPartOf( a ) ) {
               children.insert( a.typeName() );
            }
         }
      }
   }
   for ( const auto & module : Corvo::ModuleInspectData::modules() ) {
      for ( const TypeData & type : module.types() ) {
         if ( type.kind() == Vok::TypeKind::entity && !children.contains( type.name() ) &&
               !type.name().starts_with( "Test::" ) ) {
            roots.emplace_back( type.name() );
         }
      }
   }
   return roots;
}

EntityPtr newTree( std::string_view type )
{
   return FlowtrackJson::entityType( type ).instantiate( "root" );
}

EntityPtr randomTree( std::string_view type, std::uint64_t seed, unsigned changes )
{
   const EntityPtr root = newTree( type );
   TestSupport::Random random( seed );
   TestSupport::RandomEntity( *root, random ).changes( changes );
   dropStrangers( *root );
   return root;
}

EntityPtr copyOf( const Entity & root )
{
   const EntityPtr copy = newTree( root.typeData().name() );
   becomeLike( *copy, root );
   return copy;
}

void becomeLike( Entity & root, const Entity & wanted )
{
   Vok::EntityVokNboAttrLogSa writer( const_cast< Entity * >( &wanted ) );
   Vok::NboAttrLog::Out out;
   writer.write( out );
   Vok::EntityVokNboAttrLogReader reader( &root );
   Vok::NboAttrLog::In in( out.data(), out.size() );
   reader.read( in );
}

std::string loaded( std::string_view text, Entity & root, bool replace )
{
   const EntityPtr copy = copyOf( root );
   try {
      FlowtrackJson::load( FlowtrackJson::Document( text ), *copy,
            replace ? FlowtrackJson::How::replace : FlowtrackJson::How::merge );
   } catch ( const FlowtrackJson::DocumentError & e ) {
      return e.what();
   }
   becomeLike( root, *copy );
   return "";
}

// Prints a tree through reflection: nothing here knows a type of the data model.
#include "TreeText.h"

#include "Vok/Vok.h"

#include <map>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>

namespace {

using Vok::AttributeData;
using Vok::AttributeKind;

/// Shorter texts first: Ethernet9 stands before Ethernet10.
struct ByKey {
   bool operator()( const std::string & a, const std::string & b ) const
   {
      return std::pair( a.size(), a ) < std::pair( b.size(), b );
   }
};

class TreePrinter {
 public:
   explicit TreePrinter( std::ostream & out ) : out_( out ) {}

   /// What is below the line that names the entity. Its key stands there already.
   void entity( const Vok::Entity & e, std::string_view keyField )
   {
      depth_ += 3;
      for ( const AttributeData & a : e.typeData().attributes() ) {
         if ( a.name() != "nameString" && a.name() != keyField ) {
            attribute( e, a );
         }
      }
      depth_ -= 3;
   }

 private:
   std::ostream & line( const AttributeData & a )
   {
      return out_ << std::string( depth_, ' ' ) << a.name();
   }

   void attribute( const Vok::Entity & e, const AttributeData & a )
   {
      switch ( a.kind() ) {
      case AttributeKind::plain:
      case AttributeKind::optional:
      case AttributeKind::constructorArgument:
         if ( const Corvo::String text = a.get( e ); text != a.defaultText() ) {
            line( a ) << " = " << text << "\n";
         }
         return;
      case AttributeKind::map:
      case AttributeKind::set:
         return members( e, a );
      case AttributeKind::children:
         return children( e, a );
      case AttributeKind::child:
         if ( const auto child = a.child( e, "" ) ) {
            line( a ) << ( child->name().empty() ? "" : " " ) << child->name() << "\n";
            entity( *child, "" );
         }
         return;
      default:
         return; // constants and functions are the same for every entity of the type
      }
   }

   void members( const Vok::Entity & e, const AttributeData & a )
   {
      std::map< std::string, std::string, ByKey > sorted;
      a.each( e, [ & ]( std::string_view key, std::string_view value ) {
         sorted.emplace( key, value );
      } );
      for ( const auto & [ key, value ] : sorted ) {
         line( a ) << "[" << key << "]";
         if ( a.kind() == AttributeKind::map ) {
            out_ << " = " << value;
         }
         out_ << "\n";
      }
   }

   void children( const Vok::Entity & e, const AttributeData & a )
   {
      std::map< std::string, Corvo::Ptr< Vok::Entity >, ByKey > sorted;
      for ( const Corvo::String & key : a.keys( e ) ) {
         sorted.emplace( std::string( key ), a.child( e, key ) );
      }
      for ( const auto & [ key, child ] : sorted ) {
         line( a ) << "[" << key << "]\n";
         entity( *child, a.keyField() );
      }
   }

   std::ostream & out_;
   std::size_t depth_ = 0;
};

} // namespace

void printTree( std::ostream & out, const Vok::Entity & entity )
{
   out << entity.typeData().name() << " " << entity.name() << "\n";
   TreePrinter( out ).entity( entity, "" );
}

// A tree as text, read through reflection alone.
#include "tests/support/DescribeTree.h"

#include "Vok/Vok.h"

namespace TestSupport {

namespace {

using Vok::AttributeKind;

class Describer {
 public:
   explicit Describer( const Vok::Entity & root ) : root_( root ) {}

   std::string text()
   {
      entity( root_, 0 );
      return std::move( text_ );
   }

 private:
   void line( unsigned depth, std::string_view name, std::string_view value )
   {
      text_.append( 2 * depth, ' ' ).append( name ).append( " = " ).append( value ).append( "\n" );
   }

   void entity( const Vok::Entity & e, unsigned depth )
   {
      text_.append( 2 * depth, ' ' ).append( e.typeData().name() ).append( "\n" );
      for ( const Vok::AttributeData & a : e.typeData().attributes() ) {
         // The replica's root may have another name.
         if ( &e != &root_ || a.name() != "nameString" ) {
            attribute( e, a, depth + 1 );
         }
      }
   }

   void attribute( const Vok::Entity & e, const Vok::AttributeData & a, unsigned depth )
   {
      switch ( a.kind() ) {
      case AttributeKind::function:
         return;
      case AttributeKind::map:
      case AttributeKind::set:
         for ( const Corvo::String & key : a.keys( e ) ) {
            line( depth, a.name(),
                  std::string( key.view() ) + ": " +
                        std::string( a.member( e, key.view() ).view() ) );
         }
         return;
      case AttributeKind::children:
         for ( const Corvo::String & key : a.keys( e ) ) {
            line( depth, a.name(), key.view() );
            entity( *a.child( e, key.view() ), depth + 1 );
         }
         return;
      case AttributeKind::child:
         if ( const auto child = a.child( e, "" ) ) {
            line( depth, a.name(), child->name().view() );
            entity( *child, depth + 1 );
         }
         return;
      case AttributeKind::references:
         for ( const Corvo::String & key : a.keys( e ) ) {
            line( depth, a.name(), key.view() );
            reference( *a.child( e, key.view() ), depth + 1 );
         }
         return;
      default:
         line( depth, a.name(), a.get( e ).view() );
      }
   }

   void reference( const Vok::Entity & target, unsigned depth )
   {
      if ( &Vok::rootOf( target ) == &root_ ) {
         line( depth, "path", Vok::pathOf( target ).view() );
      } else if ( depth < 8 ) {
         text_.append( 2 * depth, ' ' ).append( "outside:\n" );
         entity( target, depth );
      }
   }

   const Vok::Entity & root_;
   std::string text_;
};

} // namespace

std::string describeTree( const Vok::Entity & root )
{
   return Describer( root ).text();
}

} // namespace TestSupport

// Values of one field are leaves, those of several containers; entities are lists by their keys.
#include "tools/flowtrack/json/Pattern.h"
#include "tools/flowtrack/json/Yang.h"

#include <algorithm>
#include <set>
#include <stdexcept>

namespace FlowtrackJson {

using Vok::AttributeData;
using Vok::AttributeKind;
using Vok::TypeData;

namespace {

/// A text between quotes, on one line.
std::string inQuotes( std::string_view text )
{
   std::string out = "\"";
   for ( const char c : text ) {
      if ( c == '"' || c == '\\' ) {
         out += '\\';
      }
      out += c == '\n' ? ' ' : c;
   }
   return out + '"';
}

/// Statements, indented.
class Statements {
 public:
   void line( const std::string & statement )
   {
      text_ += std::string( 2 * depth_, ' ' ) + statement + ";\n";
   }
   void open( const std::string & statement )
   {
      text_ += std::string( 2 * depth_++, ' ' ) + statement + " {\n";
   }
   void close() { text_ += std::string( 2 * --depth_, ' ' ) + "}\n"; }

   void description( std::string_view documentation )
   {
      if ( !documentation.empty() ) {
         line( "description " + inQuotes( documentation ) );
      }
   }

   std::string take() { return std::move( text_ ); }

 private:
   std::string text_;
   std::size_t depth_ = 0;
};

/// What is said of a node besides its type.
struct About {
   std::string name; ///< as YANG has it
   std::string_view documentation = {};
   std::string defaultText = {}; ///< of the framework; empty for none
   bool mandatory = false;
   bool presence = false; ///< of a container: whether it is there says something
};

class Module {
 public:
   std::string of( const TypeData & type )
   {
      const std::string name = yangTypeName( type.name() );
      out_.open( "module " + name );
      out_.line( "yang-version 1.1" );
      out_.line( "namespace \"urn:flowtrack:" + name + "\"" );
      out_.line( "prefix this" );
      out_.description( type.documentation() );
      const AttributeData * const identity = identityOf( type );
      out_.open( "container " + yangContainer( type ) );
      entity( type, identity ? jsonName( *identity ) : "" );
      out_.close();
      while ( !toDefine_.empty() ) {
         const std::string_view next = *toDefine_.begin();
         toDefine_.erase( toDefine_.begin() );
         define( shapeOf( next ) );
      }
      out_.close();
      return out_.take();
   }

 private:
   // ---- Types of leaves ----

   /// `type` with what narrows it, as a statement without its end.
   void type( const Shape & shape )
   {
      if ( !shape.type ) {
         return builtIn( shape );
      }
      const Shape & own = shapeOf( shape.type->name() );
      if ( defined_.insert( own.typeName ).second ) {
         toDefine_.insert( own.typeName );
      }
      const std::string name = yangTypeName( shape.type->name() );
      if ( shape.form == Form::number && ( shape.least > own.least || shape.most < own.most ) ) {
         out_.open( "type " + name );
         range( shape );
         out_.close();
      } else {
         out_.line( "type " + name );
      }
   }

   void range( const Shape & shape )
   {
      out_.line( "range \"" + std::to_string( shape.least ) + ".." + std::to_string( shape.most ) +
            "\"" );
   }

   void builtIn( const Shape & shape )
   {
      switch ( shape.form ) {
      case Form::truth:
         return out_.line( "type boolean" );
      case Form::number:
      case Form::bigNumber:
         out_.open( shape.form == Form::number ? "type uint32" : "type uint64" );
         range( shape );
         return out_.close();
      case Form::real:
         out_.open( "type string" );
         out_.line( "pattern '-?[0-9]+(\\.[0-9]+)?(e[+\\-][0-9]+)?|-?inf|nan'" );
         return out_.close();
      case Form::flags:
         return bits( shape );
      case Form::choice:
         return enumeration( *shape.choices );
      default:
         return text( shape );
      }
   }

   void bits( const Shape & shape )
   {
      out_.open( "type bits" );
      for ( const Flag & flag : shape.flags ) {
         out_.open( "bit " + yangName( flag.name ) );
         out_.line( "position " + std::to_string( flag.bit ) );
         out_.description( flag.documentation );
         out_.close();
      }
      out_.close();
   }

   void enumeration( const TypeData & type )
   {
      constexpr std::uint32_t mostValue = 0x7FFFFFFF;
      out_.open( "type enumeration" );
      for ( const auto & [ code, name ] : type.enumerators() ) {
         out_.open( "enum " + inQuotes( name ) );
         if ( code <= mostValue ) {
            out_.line( "value " + std::to_string( code ) );
         }
         out_.description( type.enumeratorDocumentation( code ) );
         out_.close();
      }
      out_.close();
   }

   void text( const Shape & shape )
   {
      const std::string pattern = textPattern( shape );
      if ( pattern.empty() ) {
         return out_.line( "type string" );
      }
      out_.open( "type string" );
      out_.line( "pattern '" + pattern + "'" );
      out_.close();
   }

   void define( const Shape & shape )
   {
      out_.open( "typedef " + yangTypeName( shape.typeName ) );
      builtIn( shape );
      out_.description( shape.type->documentation() );
      out_.close();
   }

   // ---- Values ----

   void value( const Shape & shape, const About & about )
   {
      if ( shape.form == Form::object ) {
         out_.open( "container " + about.name );
         if ( about.presence ) {
            out_.line( "presence \"there is a value\"" );
         }
         out_.description( about.documentation );
         fields( *shape.type, "", about.defaultText );
         out_.close();
         return;
      }
      out_.open( "leaf " + about.name );
      type( shape );
      if ( about.mandatory ) {
         out_.line( "mandatory true" );
      } else if ( !about.defaultText.empty() ) {
         out_.line( "default " + inQuotes( leafText( shape, about.defaultText ) ) );
      }
      out_.description( about.documentation );
      out_.close();
   }

   static std::string leafText( const Shape & shape, const std::string & text )
   {
      const Json json = rfc7951Leaf( shape, text );
      return json.is_string() ? json.get< std::string >() : json.dump();
   }

   void fields( const TypeData & type, std::string_view without, const std::string & defaultText )
   {
      Vok::Value preset = type.make();
      if ( !defaultText.empty() ) {
         Vok::CharRange range( defaultText );
         type.strepToValue( range, preset.data() );
      }
      for ( const AttributeData * const f : fieldsOf( type ) ) {
         if ( f->name() == without ) {
            continue;
         }
         if ( f->kind() == AttributeKind::set ) {
            leafList( *f );
         } else if ( f->kind() == AttributeKind::map ) {
            map( *f );
         } else {
            value( shapeOf( type, *f ),
                  { .name = yangName( f->name() ),
                        .documentation = f->documentation(),
                        .defaultText = std::string( type.fieldGet( preset.data(), f->name() ) ) } );
         }
      }
   }

   // ---- Collections ----

   void leafList( const AttributeData & set )
   {
      out_.open( "leaf-list " + yangName( set.name() ) );
      const Shape & shape = shapeOf( set.keyTypeName() );
      shape.form == Form::object ? out_.line( "type string" ) : type( shape );
      out_.description( set.documentation() );
      out_.close();
   }

   void paths( const AttributeData & a )
   {
      const bool several = a.kind() == AttributeKind::references;
      out_.open( ( several ? "leaf-list " : "leaf " ) + yangName( a.name() ) );
      out_.open( "type string" );
      out_.line( "pattern '/.*'" );
      out_.close();
      if ( !several ) {
         out_.line( "mandatory true" );
      }
      out_.description( a.documentation() );
      out_.close();
   }

   /// The head of a list, with the leaf that is its key.
   void list( const AttributeData & collection, const std::string & key )
   {
      const Shape & shape = shapeOf( collection.keyTypeName() );
      out_.open( "list " + yangName( collection.name() ) );
      out_.line( "key " + key );
      out_.description( collection.documentation() );
      out_.open( "leaf " + key );
      shape.form == Form::object ? out_.line( "type string" ) : type( shape );
      out_.close();
   }

   void map( const AttributeData & a )
   {
      const Shape & shape = shapeOf( a.typeName() );
      const bool inside = !a.keyField().empty();
      list( a, inside ? yangName( a.keyField() ) : "key" );
      if ( inside ) {
         fields( *shape.type, a.keyField(), "" );
      } else {
         value( shape, { .name = "value", .mandatory = true } );
      }
      out_.close();
   }

   // ---- Entities ----

   void entity( const TypeData & type, std::string_view without )
   {
      if ( !above_.insert( &type ).second ) {
         throw std::invalid_argument( std::string( type.name() ) +
               " holds entities of its own type, for which YANG has no words" );
      }
      for ( const AttributeData & a : type.attributes() ) {
         if ( isContent( a ) && jsonName( a ) != without ) {
            attribute( type, a );
         }
      }
      above_.erase( &type );
   }

   void attribute( const TypeData & owner, const AttributeData & a )
   {
      switch ( a.kind() ) {
      case AttributeKind::set:
         return leafList( a );
      case AttributeKind::map:
         return map( a );
      case AttributeKind::references:
         return paths( a );
      case AttributeKind::children:
         list( a, yangName( a.keyField() ) );
         entity( entityType( a.typeName() ), a.keyField() );
         return out_.close();
      case AttributeKind::child:
         out_.open( "container " + yangName( a.name() ) );
         out_.line( "presence \"there is one\"" );
         out_.description( a.documentation() );
         entity( entityType( a.typeName() ), "" );
         return out_.close();
      default:
         break;
      }
      if ( isReference( a ) ) {
         return paths( a );
      }
      value( shapeOfAttribute( owner, a ),
            { .name = yangName( jsonName( a ) ),
                  .documentation = a.documentation(),
                  .defaultText = std::string( a.defaultText() ),
                  .mandatory = a.kind() == AttributeKind::constructorArgument,
                  .presence = a.kind() == AttributeKind::optional } );
   }

   Statements out_;
   std::set< std::string_view > defined_;
   std::set< std::string_view > toDefine_;
   std::set< const TypeData * > above_; ///< types of the entities that what is written lies in
};

} // namespace

std::string yangModule( const TypeData & type ) { return Module().of( type ); }

std::string yangContainer( const TypeData & type )
{
   return yangTypeName( type.name().substr( type.name().rfind( ':' ) + 1 ) );
}

} // namespace FlowtrackJson

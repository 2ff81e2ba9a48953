// Short lists are told in full, long ones by their beginning.
#include "tools/flowtrack/json/Words.h"

#include "tools/flowtrack/json/Hint.h"

namespace FlowtrackJson {

namespace {

std::vector< std::string > fieldNames( const Vok::TypeData & type )
{
   std::vector< std::string > names;
   for ( const Vok::AttributeData * const field : fieldsOf( type ) ) {
      names.emplace_back( field->name() );
   }
   return names;
}

std::string numberBounds( const Shape & shape )
{
   return std::to_string( shape.least ) + " to " + std::to_string( shape.most );
}

} // namespace

std::string oneOf( const std::vector< std::string > & names )
{
   constexpr std::size_t most = 12;
   std::string text = names.size() == 1 ? "" : names.empty() ? "nothing"
                                                             : "one of ";
   for ( std::size_t i = 0; i != names.size(); ++i ) {
      if ( i == most && names.size() > most + 1 ) {
         return text + " and " + std::to_string( names.size() - most ) + " more";
      }
      text += ( i == 0 ? "" : ", " ) + names[ i ];
   }
   return text;
}

std::string allowedBy( const Shape & shape )
{
   switch ( shape.form ) {
   case Form::truth:
      return "true or false";
   case Form::number:
      return "a whole number from " + numberBounds( shape );
   case Form::bigNumber:
      return "a text with a whole number from " + numberBounds( shape );
   case Form::real:
      return R"(a number, "inf", "-inf" or "nan")";
   case Form::text:
      return shape.hand ? "a text that is a " + std::string( shape.typeName ) : "a text";
   case Form::choice: {
      std::vector< std::string > names;
      for ( const auto & [ code, name ] : shape.choices->enumerators() ) {
         names.emplace_back( name );
      }
      return oneOf( names );
   }
   case Form::flags: {
      std::vector< std::string > names;
      for ( const Flag & flag : shape.flags ) {
         names.push_back( flag.name );
      }
      return "an array of flags, each " + oneOf( names );
   }
   case Form::object:
      break;
   }
   return "an object with " + oneOf( fieldNames( *shape.type ) );
}

std::string definitionOf( const Vok::TypeData & owner, const Vok::AttributeData & attribute )
{
   std::string text = std::string( owner.name() ).append( "::" ).append( jsonName( attribute ) );
   const std::string_view type = attribute.typeName();
   if ( type.find( "::" ) != std::string_view::npos && !type.starts_with( "Corvo::" ) &&
         !type.starts_with( "Vok::" ) ) {
      text.append( ", " ).append( type );
   }
   return text;
}

std::string suggestion( std::string_view found, const std::vector< std::string > & names )
{
   const std::string near = nearest( found, names );
   return near.empty() ? near : ", did you mean " + near;
}

} // namespace FlowtrackJson

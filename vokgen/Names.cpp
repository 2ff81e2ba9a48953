#include "vokgen/Names.h"

#include <algorithm>
#include <array>

namespace VokGen::Names {
namespace {

bool isUpper( char c ) { return c >= 'A' && c <= 'Z'; }
bool isLower( char c ) { return c >= 'a' && c <= 'z'; }

template< std::size_t count >
bool contains( const std::array< std::string_view, count > & words, std::string_view name )
{
   return std::find( words.begin(), words.end(), name ) != words.end();
}

constexpr auto cppKeywords = std::to_array< std::string_view >( { "alignas", "alignof", "and",
      "and_eq", "asm", "auto", "bitand", "bitor", "bool", "break", "case", "catch", "char",
      "char16_t", "char32_t", "char8_t", "class", "co_await", "co_return", "co_yield", "compl",
      "concept", "const", "const_cast", "consteval", "constexpr", "constinit", "continue",
      "decltype", "default", "delete", "do", "double", "dynamic_cast", "else", "enum", "explicit",
      "export", "extern", "false", "float", "for", "friend", "goto", "if", "inline", "int", "long",
      "mutable", "namespace", "new", "noexcept", "not", "not_eq", "nullptr", "operator", "or",
      "or_eq", "private", "protected", "public", "register", "reinterpret_cast", "requires",
      "return", "short", "signed", "sizeof", "static", "static_assert", "static_cast", "struct",
      "switch", "template", "this", "thread_local", "throw", "true", "try", "typedef", "typeid",
      "typename", "union", "unsigned", "using", "virtual", "void", "volatile", "wchar_t", "while",
      "xor", "xor_eq" } );

/// Names that the C or C++ library, or a compiler in its GNU mode, defines as macros.
constexpr auto macros = std::to_array< std::string_view >(
      { "BUFSIZ", "EOF", "FILENAME_MAX", "INFINITY", "NAN", "NULL", "RAND_MAX", "assert", "errno",
            "linux", "major", "minor", "makedev", "offsetof", "stderr", "stdin", "stdout", "unix",
            "va_arg", "va_copy", "va_end", "va_start" } );

constexpr auto entityNames = std::to_array< std::string_view >( { "name", "nameString", "parent",
      "handleParent", "refCount", "publisher", "typeData" } );

constexpr auto valueNames = std::to_array< std::string_view >( { "isEq", "attrLogSize" } );

constexpr auto handLogNames =
      std::to_array< std::string_view >( { "logSize", "writeLog", "readLog" } );

constexpr auto freeNames = std::to_array< std::string_view >(
      { "attrLogSize", "sequenceToValue", "stringValue" } );

constexpr auto frameworkNamespaces = std::to_array< std::string_view >( { "Corvo", "Vok", "std" } );

bool startsWith( std::string_view name, std::string_view start )
{
   return name.substr( 0, start.size() ) == start;
}

bool endsWith( std::string_view name, std::string_view end )
{
   return name.size() >= end.size() && name.substr( name.size() - end.size() ) == end;
}

} // namespace

std::string capitalised( std::string_view name )
{
   std::string result( name );
   if ( !result.empty() && isLower( result.front() ) ) {
      result.front() = static_cast< char >( result.front() - 'a' + 'A' );
   }
   return result;
}

std::string uncapitalised( std::string_view name )
{
   std::string result( name );
   if ( !result.empty() && isUpper( result.front() ) ) {
      result.front() = static_cast< char >( result.front() - 'A' + 'a' );
   }
   return result;
}

std::string mutator( std::string_view x ) { return std::string( x ) + "Is"; }
std::string mutatorByText( std::string_view x ) { return "vok" + capitalised( mutator( x ) ); }
std::string remover( std::string_view x ) { return std::string( x ) + "Del"; }
std::string clearer( std::string_view x ) { return std::string( x ) + "DelAll"; }
std::string incrementer( std::string_view x ) { return std::string( x ) + "Inc"; }
std::string secondLookup( std::string_view x ) { return std::string( x ) + "Get"; }
std::string boundsCheck( std::string_view x ) { return "check" + capitalised( x ); }
std::string attributeId( std::string_view x ) { return std::string( x ) + "AttrId"; }
std::string dataMember( std::string_view x ) { return std::string( x ) + "_"; }
std::string hashNode( std::string_view x ) { return "HN_" + capitalised( x ); }
std::string orderedNode( std::string_view x ) { return "Vok" + capitalised( x ); }
std::string keyFunctor( std::string_view x ) { return capitalised( x ) + "KeyFunktor"; }

std::string factory( std::string_view type ) { return uncapitalised( type ) + "Factory"; }
std::string creator( std::string_view type ) { return std::string( type ) + "Is"; }
std::string instance( std::string_view enumeration )
{
   return std::string( enumeration ) + "Instance";
}

std::string reflectionObject( std::string_view module, std::uint64_t fingerprint )
{
   return "_" + std::string( module ) + "_" + hexadecimal( fingerprint ) + "_vokModule";
}

std::string hexadecimal( std::uint64_t number )
{
   constexpr std::string_view digits = "0123456789abcdef";
   std::string result( 16, '0' );
   for ( std::size_t i = result.size(); i-- > 0; number >>= 4U ) {
      result[ i ] = digits[ number & 15U ];
   }
   return result;
}

bool isCppKeyword( std::string_view name )
{
   return contains( cppKeywords, name ) || contains( macros, name );
}

bool isGeneratedForm( std::string_view name )
{
   return startsWith( name, "vok" ) || startsWith( name, "Vok" ) || startsWith( name, "VOK_" ) ||
         startsWith( name, "HN_" ) || endsWith( name, "AttrId" ) ||
         endsWith( name, "KeyFunktor" ) || name == "FlowOut";
}

std::span< const std::string_view > entityMembers() { return entityNames; }
std::span< const std::string_view > valueMembers() { return valueNames; }
std::span< const std::string_view > handLogMembers() { return handLogNames; }
std::span< const std::string_view > freeFunctions() { return freeNames; }

bool isFrameworkNamespace( std::string_view name ) { return contains( frameworkNamespaces, name ); }

} // namespace VokGen::Names

// The parser tells what it reads and not where. Where it has come to is counted by the iterator
// that it reads through; a token starts behind the one before, and what may stand between them.
#include "tools/flowtrack/json/Document.h"

#include "tools/flowtrack/json/Problem.h"
#include "tools/flowtrack/json/Text.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <nlohmann/json.hpp>
#include <set>

namespace FlowtrackJson {

namespace {

using Json = nlohmann::json;

constexpr std::size_t deepest = 256;

/// Reads a text and notes how far it has come.
class Counted {
 public:
   using iterator_category = std::input_iterator_tag;
   using value_type = char;
   using difference_type = std::ptrdiff_t;
   using pointer = const char *;
   using reference = const char &;

   Counted( const char * at, std::size_t & count ) : at_( at ),
                                                     count_( &count )
   {
   }
   reference operator*() const { return *at_; }
   Counted & operator++()
   {
      ++at_;
      ++*count_;
      return *this;
   }
   Counted operator++( int )
   {
      Counted before = *this;
      ++*this;
      return before;
   }
   friend bool operator==( const Counted & a, const Counted & b ) { return a.at_ == b.at_; }

 private:
   const char * at_;
   std::size_t * count_;
};

Place placeIn( std::string_view text, std::size_t offset )
{
   const std::string_view before = text.substr( 0, offset );
   const std::size_t lineStart = before.rfind( '\n' ) + 1; // npos + 1 is 0
   const std::string_view line = before.substr( lineStart );
   const auto characters = std::count_if( line.begin(), line.end(),
         []( char c ) { return ( static_cast< unsigned char >( c ) & 0xC0 ) != 0x80; } );
   return { 1 + static_cast< std::size_t >( std::count( before.begin(), before.end(), '\n' ) ),
      1 + static_cast< std::size_t >( characters ) };
}

/// Builds nodes from what the parser tells.
class Builder {
 public:
   Builder( std::string_view text, const std::size_t & count, Node & root )
         : text_( text ),
           count_( count ),
           open_{ &root }
   {
      if ( text.starts_with( "\xEF\xBB\xBF" ) ) {
         end_ = 3;
      }
   }

   // What the parser calls.

   bool null() { return scalar( Node::Kind::null, "null" ); }
   bool boolean( bool value ) { return scalar( Node::Kind::truth, value ? "true" : "false" ); }
   bool number_integer( Json::number_integer_t ) { return number(); }
   bool number_unsigned( Json::number_unsigned_t ) { return number(); }
   bool number_float( Json::number_float_t, const std::string & ) { return number(); }
   bool string( std::string & value ) { return scalar( Node::Kind::text, value ); }
   bool binary( Json::binary_t & ) { return false; }
   bool start_object( std::size_t ) { return start( Node::Kind::object ); }
   bool start_array( std::size_t ) { return start( Node::Kind::array ); }
   bool end_object() { return end(); }
   bool end_array() { return end(); }

   bool key( std::string & name )
   {
      const std::size_t at = token();
      Node & object = *open_.back();
      if ( !names_.back().insert( name ).second ) {
         problemAt( at, described( Node( Node::Kind::text, name ) ) + " a second time",
               "each name once in an object" );
      }
      object.members.push_back( { name, at, {} } );
      end_ = count_;
      return true;
   }

   bool parse_error( std::size_t byte, const std::string &, const Json::exception & error )
   {
      std::string said = error.what();
      for ( const char * const before : { ": ", " - " } ) { // where, and while doing what
         const std::size_t at = said.find( before );
         said.erase( 0, at == std::string::npos ? 0 : at + std::strlen( before ) );
      }
      static const std::string expected = "; expected ";
      const std::size_t at = said.find( expected );
      problemAt( byte == 0 ? 0 : byte - 1, said.substr( 0, at ),
            at == std::string::npos ? "JSON as in RFC 8259" : said.substr( at + expected.size() ) );
      return false;
   }

   Problems problems;

 private:
   /// Where the token starts that was read last.
   std::size_t token() const
   {
      const std::size_t at = text_.find_first_not_of( " \t\r\n,:", end_ );
      return std::min( at, text_.size() );
   }

   Node & place()
   {
      Node & parent = *open_.back();
      if ( open_.size() == 1 ) {
         return parent;
      }
      return parent.kind == Node::Kind::array ? parent.elements.emplace_back()
                                              : parent.members.back().value;
   }

   bool scalar( Node::Kind kind, std::string_view text )
   {
      const std::size_t at = token();
      place() = Node( kind, std::string( text ), at );
      end_ = count_;
      return true;
   }

   /// The parser has read one character more than the number has, but at the end of the text.
   bool number()
   {
      const std::size_t at = token();
      const std::size_t past = text_.find_first_not_of( "0123456789+-.eE", at );
      end_ = std::min( past, text_.size() );
      place() = Node( Node::Kind::number, std::string( text_.substr( at, end_ - at ) ), at );
      return true;
   }

   bool start( Node::Kind kind )
   {
      const std::size_t at = token();
      Node & node = place();
      node.kind = kind;
      node.offset = at;
      if ( open_.size() > deepest ) {
         problemAt( at, "one more level", std::to_string( deepest ) + " levels" );
         return false;
      }
      open_.push_back( &node );
      names_.emplace_back();
      end_ = count_;
      return true;
   }

   bool end()
   {
      open_.pop_back();
      names_.pop_back();
      end_ = count_;
      return true;
   }

   void problemAt( std::size_t offset, std::string found, std::string allowed )
   {
      const Place at = placeIn( text_, offset );
      problems.push_back(
            { "", at.line, at.column, std::move( found ), std::move( allowed ), "" } );
   }

   std::string_view text_;
   const std::size_t & count_; ///< bytes that the parser has read
   std::size_t end_ = 0; ///< of the token before
   std::vector< Node * > open_; ///< where values go, the innermost last; the first is the root
   std::vector< std::set< std::string > > names_; ///< of the objects among them
};

} // namespace

// Here members are complete, of which nodes have a list.
Node::Node() noexcept = default;
Node::Node( const Node & ) = default;
Node::Node( Node && ) noexcept = default;
Node & Node::operator=( const Node & ) = default;
Node & Node::operator=( Node && ) noexcept = default;
Node::~Node() = default;

Node::Node( Kind ofKind, std::string ofText, std::size_t at ) : kind( ofKind ),
                                                                text( std::move( ofText ) ),
                                                                offset( at )
{
}

Document::Document( std::string_view text ) : text_( text )
{
   std::size_t count = 0;
   Builder builder( text_, count, root_ );
   const char * const first = text_.data();
   Json::sax_parse(
         Counted( first, count ), Counted( first + text_.size(), count ), &builder );
   if ( !builder.problems.empty() ) {
      throw DocumentError( std::move( builder.problems ) );
   }
}

Place Document::placeOf( std::size_t offset ) const { return placeIn( text_, offset ); }

std::string described( const Node & node )
{
   constexpr std::size_t most = 60;
   switch ( node.kind ) {
   case Node::Kind::array:
      return node.elements.empty() ? "an empty array" : "an array";
   case Node::Kind::object:
      return node.members.empty() ? "an empty object" : "an object";
   case Node::Kind::text: {
      const std::string_view shown = firstCharacters( node.text, most );
      return Json( shown ).dump() + ( shown.size() == node.text.size() ? "" : "…" );
   }
   default:
      return node.text.substr( 0, most );
   }
}

std::string pointerStep( std::string_view name )
{
   std::string step = "/";
   for ( const char c : name ) {
      if ( c == '~' ) {
         step += "~0";
      } else if ( c == '/' ) {
         step += "~1";
      } else {
         step += c;
      }
   }
   return step;
}

} // namespace FlowtrackJson

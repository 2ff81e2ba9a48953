// The two ends of a change stream, as clients see them.
#include "Vok/NboAttrLogSa.h"

#include "Vok/detail/BatchHistory.h"
#include "Vok/detail/BatchNode.h"
#include "Vok/detail/BatchReader.h"
#include "Vok/detail/BatchWriter.h"

#include <stdexcept>

namespace Vok {

EntityVokNboAttrLogSa::EntityVokNboAttrLogSa( const Corvo::Ptr< Entity > & root )
      : writer_( std::make_unique< Detail::BatchWriter >( root ) )
{
}

EntityVokNboAttrLogSa::~EntityVokNboAttrLogSa() = default;

bool EntityVokNboAttrLogSa::hasChanges() const noexcept
{
   return writer_->hasChanges();
}

void EntityVokNboAttrLogSa::write( NboAttrLog::Out & out )
{
   writer_->write( out );
}

void EntityVokNboAttrLogSa::resync() noexcept
{
   writer_->resync();
}

void EntityVokNboAttrLogSa::writeWhole( NboAttrLog::Out & out )
{
   writer_->catchUp( 0, out );
}

void EntityVokNboAttrLogSa::onPending( std::function< void() > f )
{
   writer_->onPending( std::move( f ) );
}

StreamPlace::StreamPlace( EntityVokNboAttrLogSa & writer )
      : place_( std::make_unique< Detail::BatchPlace >( *writer.writer_ ) )
{
}

StreamPlace::~StreamPlace() = default;

StreamPlace::Told StreamPlace::catchUp( NboAttrLog::Out & out )
{
   Detail::BatchWriter * const writer = place_->writer;
   if ( !writer ) {
      throw std::logic_error( "a reader catches up with a stream that is gone" );
   }
   if ( place_->batch == writer->written() && !writer->hasChanges() ) {
      return Told::nothing;
   }
   const bool whole = writer->catchUp( place_->batch, out );
   writer->moveToEnd( *place_ );
   return whole ? Told::wholeTree : Told::changes;
}

EntityVokNboAttrLogReader::EntityVokNboAttrLogReader( const Corvo::Ptr< Entity > & root )
      : reader_( std::make_unique< Detail::BatchReader >( root ) )
{
}

EntityVokNboAttrLogReader::~EntityVokNboAttrLogReader() = default;

void EntityVokNboAttrLogReader::read( NboAttrLog::In & in )
{
   reader_->read( in );
}

std::vector< Corvo::String > EntityVokNboAttrLogReader::passedOver() const
{
   return reader_->passedOver();
}

} // namespace Vok

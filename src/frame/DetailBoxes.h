#pragma once

#include "fif/DetailFields.h"

class MainControls;

/// The six detail fields on the boxes of the main window. The shared state points here as long as the object lives.
class DetailBoxes : public DetailFields
{
public:
    /// `controls` outlives it.
    explicit DetailBoxes(const MainControls& controls);
    ~DetailBoxes() override;
    DetailBoxes(const DetailBoxes&) = delete;
    DetailBoxes& operator=(const DetailBoxes&) = delete;

    void set_txtFilename(const QString& text) override;
    void set_txtArtist(const QString& text) override;
    void set_txtTitle(const QString& text) override;
    void set_txtGenre(const QString& text) override;
    QString txtGenre() const override;
    void set_Label_filesize(const QString& text) override;
    GenreBox& cboGenre() override;

private:
    const MainControls& controls_;
};

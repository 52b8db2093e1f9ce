#include "pluginCore/localisation/LocalisedStringsManager.h"
#include "support/KeptTranslations.h"
#include "support/MessageLoop.h"
#include "support/Signals.h"
#include "support/SystemLanguage.h"
#include "support/VarloEditorFixture.h"

#include <gmock/gmock.h>

namespace cv::varlo
{
namespace
{
using cv::test::runMessageLoopUntil;
using juce::AccessibilityRole;
using testing::ElementsAre;
using testing::ElementsAreArray;

/** What a screen reader says of a part of the window. */
struct Part
{
    AccessibilityRole role;
    juce::String name;
    juce::String value; // empty where there is none
    juce::String help;

    bool operator== (const Part& other) const
    {
        return role == other.role && name == other.name && value == other.value && help == other.help;
    }
};

std::ostream& operator<< (std::ostream& stream, const Part& part)
{
    return stream << (int) part.role << ": " << part.name << " | " << part.value << " | " << part.help;
}

/** All parts in the order in which a reader finds them. What only holds others is left out. */
std::vector<Part> readParts (juce::Component& window)
{
    std::vector<Part> parts;

    for (const auto* const handler : window.getAccessibilityHandler()->getChildren())
    {
        if (handler->getRole() == AccessibilityRole::unspecified)
            continue;

        const auto* const value = handler->getValueInterface();
        parts.push_back ({ handler->getRole(), handler->getTitle(),
                           value != nullptr ? value->getCurrentValueAsString() : juce::String(), handler->getHelp() });
    }

    return parts;
}

/** The window in a language. */
class SpokenWindow
{
public:
    explicit SpokenWindow (const std::string& languageCode) : language (languageCode)
    {
        harness.processor.getGlobalSettings().getValues().setProperty ("checkForUpdates", "0", nullptr);
        editor.reset (harness.processor.createEditorIfNeeded());
        editor->addToDesktop (0);
        editor->setVisible (true);
    }

    ~SpokenWindow() { harness.processor.editorBeingDeleted (editor.get()); }

    std::vector<Part> read() const { return readParts (*editor); }

    /** Without the text boxes, which say the knobs' values once more. */
    std::vector<Part> readControls() const
    {
        auto parts = read();
        std::erase_if (parts, [] (const auto& part) { return part.role == AccessibilityRole::editableText; });
        return parts;
    }

private:
    const test::KeptTranslations keptTranslations;
    const test::TemporaryHome home;
    const test::SystemLanguage language;
    test::ProcessorHarness harness;
    std::unique_ptr<juce::AudioProcessorEditor> editor;
};

/** A control's name and help in a language. */
struct Words
{
    const char* name;
    const char* help;
};

struct WindowWords
{
    const char* code;
    std::array<Words, 14> controls;
    const char* silence;
};

// Names that the window shows stay as they are there, so that who hears them finds them.
const WindowWords windowWords[] {
    { "en",
      { { { "Varlo", "Show the version and the maker" },
          { "Previous preset", "Load the preset before the current one" },
          { "Presets", "Click to open a menu" },
          { "Next preset", "Load the preset after the current one" },
          { "About", "Show the version and the maker" },
          { "Spectrogram", "The last five seconds of the output: time runs to the left, frequency upwards" },
          { "Tap Tempo", "Tap in time to set the delay" },
          { "Tempo light", "Flashes once in each delay" },
          { "Delay", "Time from each echo to the next" },
          { "Feedback", "How much of each echo comes back as the next" },
          { "Degrade", "Downsample : sample rate reduction" },
          { "Lowpass", "Adjust the filter's cutoff frequency" },
          { "Resonance", "Adjust the filter's resonance" },
          { "Mix", "Amount of wet signal in the output mix" } } },
      "Silence" },
    { "fr",
      { { { "Varlo", "Afficher la version et le fabricant" },
          { "Preset précédent", "Charger le preset d'avant" },
          { "Presets", "Cliquer pour ouvrir un menu" },
          { "Preset suivant", "Charger le preset d'après" },
          { "À propos", "Afficher la version et le fabricant" },
          { "Spectrogramme", "Les cinq dernières secondes de la sortie\xc2\xa0: le temps défile vers la gauche, la "
                             "fréquence croît vers le haut" },
          { "Tap Tempo", "Taper en rythme pour régler le delay" },
          { "Voyant de tempo", "Clignote une fois à chaque delay" },
          { "Delay", "Durée d'un écho au suivant" },
          { "Feedback", "Part de chaque écho qui revient dans le suivant" },
          { "Degrade", "Downsample\xc2\xa0: réduction de la fréquence d'échantillonnage" },
          { "Lowpass", "Régler la fréquence de coupure du filtre" },
          { "Resonance", "Régler la résonance du filtre" },
          { "Mix", "Quantité de signal wet dans le mix de sortie" } } },
      "Silence" },
    { "es",
      { { { "Varlo", "Mostrar la versión y el fabricante" },
          { "Preset anterior", "Cargar el preset de antes" },
          { "Presets", "Hacer clic para abrir un menú" },
          { "Preset siguiente", "Cargar el preset de después" },
          { "Acerca de", "Mostrar la versión y el fabricante" },
          { "Espectrograma", "Los últimos cinco segundos de la salida: el tiempo corre hacia la izquierda, la "
                             "frecuencia hacia arriba" },
          { "Tap Tempo", "Pulsar al compás para ajustar el delay" },
          { "Luz de tempo", "Parpadea una vez en cada delay" },
          { "Delay", "Tiempo de un eco al siguiente" },
          { "Feedback", "Cuánto de cada eco vuelve en el siguiente" },
          { "Degrade", "Downsample: reducción de la frecuencia de muestreo" },
          { "Lowpass", "Ajustar la frecuencia de corte del filtro" },
          { "Resonance", "Ajustar la resonancia del filtro" },
          { "Mix", "Cantidad de señal wet en la mezcla de salida" } } },
      "Silencio" },
    { "pt",
      { { { "Varlo", "Mostrar a versão e o fabricante" },
          { "Preset anterior", "Carregar o preset de antes" },
          { "Presets", "Clique para abrir um menu" },
          { "Próximo preset", "Carregar o preset de depois" },
          { "Sobre", "Mostrar a versão e o fabricante" },
          { "Espectrograma", "Os últimos cinco segundos da saída: o tempo corre para a esquerda, a frequência para "
                             "cima" },
          { "Tap Tempo", "Toque no ritmo para ajustar o delay" },
          { "Luz de tempo", "Pisca uma vez a cada delay" },
          { "Delay", "Tempo de um eco ao seguinte" },
          { "Feedback", "Quanto de cada eco volta no seguinte" },
          { "Degrade", "Downsample: redução da taxa de amostragem" },
          { "Lowpass", "Ajustar a frequência de corte do filtro" },
          { "Resonance", "Ajustar a ressonância do filtro" },
          { "Mix", "Quantidade de sinal wet na mixagem de saída" } } },
      "Silêncio" },
};

class VarloAccessibilityTest : public test::VarloEditorFixture
{
protected:
    VarloAccessibilityTest()
    {
        editor->addToDesktop (0);
        editor->setVisible (true);
    }

    /** The part with this name, empty if there is none. */
    Part getPart (const juce::String& name) const
    {
        for (const auto& part : readParts (*editor))
            if (part.name == name)
                return part;

        return {};
    }
};

TEST (VarloAccessibilityTestLanguages, AreAllThatThereAre)
{
    const auto languages = pluginCore::LocalisedStringsManager::getLanguages();
    ASSERT_EQ (languages.size(), std::size (windowWords));

    for (size_t i = 0; i < languages.size(); ++i)
        EXPECT_STREQ (languages[i].code, windowWords[i].code);
}

TEST (VarloAccessibilityTestLanguages, EachSaysAllControlsFromTheTopLeftToTheBottomRight)
{
    using enum AccessibilityRole;
    const std::array roles { button, button, button, button, button, image,  button,
                             image,  slider, slider, slider, slider, slider, slider };

    for (const auto& words : windowWords)
    {
        const std::array<juce::String, 14> values {
            "",     "",    "",        "",    "",    juce::String::fromUTF8 (words.silence), "", "1000 ms", "1000.0 ms",
            "50 %", "0 %", "5000 Hz", "0 %", "50 %"
        };
        std::vector<Part> expected;

        for (size_t i = 0; i < words.controls.size(); ++i)
            expected.push_back ({ roles[i], juce::String::fromUTF8 (words.controls[i].name), values[i],
                                  juce::String::fromUTF8 (words.controls[i].help) });

        EXPECT_THAT (SpokenWindow (words.code).readControls(), ElementsAreArray (expected)) << words.code;
    }
}

TEST_F (VarloAccessibilityTest, NothingIsWithoutAName)
{
    const auto expectNames = [this]
    {
        for (const auto& part : readParts (*editor))
            EXPECT_TRUE (part.name.isNotEmpty()) << part;
    };

    expectNames();
    find<AboutComponent>().setVisible (true);
    expectNames();
    EXPECT_EQ (getPart ("corvane.example").role, AccessibilityRole::hyperlink);
}

TEST_F (VarloAccessibilityTest, TheButtonsWithoutAPlaceAreNotThere)
{
    for (const auto* const name : { "Undo", "Redo" })
        EXPECT_EQ (getPart (name).name, "");
}

TEST_F (VarloAccessibilityTest, ThePresetsButtonSaysThePreset)
{
    auto& presets = harness.processor.getPresetsManager();
    presets.savePreset (presets.getLocations().userFolder.getChildFile ("Echo Chamber.cvpreset"), true);
    EXPECT_TRUE (runMessageLoopUntil ([this] { return getPart ("Presets, Echo Chamber").name.isNotEmpty(); }));

    harness.set ("mix", 20.0f);
    EXPECT_TRUE (runMessageLoopUntil ([this] { return getPart ("Presets, Echo Chamber*").name.isNotEmpty(); }));
}

TEST_F (VarloAccessibilityTest, TheKnobsMoveTheirParameters)
{
    for (const auto& [caption, id, value] :
         { std::tuple ("Delay", "delay", 250.0f), std::tuple ("Feedback", "feedback", 20.0f),
           std::tuple ("Degrade", "degrade", 30.0f), std::tuple ("Lowpass", "lowpass", 400.0f),
           std::tuple ("Reso", "resonance", 60.0f), std::tuple ("Mix", "mix", 70.0f) })
    {
        findSlider (caption).getAccessibilityHandler()->getValueInterface()->setValue (value);
        EXPECT_NEAR (harness.parameter (id).get(), value, 0.01f * value) << caption;
    }

    EXPECT_EQ (getPart ("Lowpass").value, "400 Hz");
    EXPECT_EQ (getPart ("Tempo light").value, "250 ms");
}

TEST_F (VarloAccessibilityTest, TheSpectrogramSaysTheLoudestTone)
{
    auto& fftProcessor = harness.processor.getFFTProcessor();
    auto& spectrogram = find<SpectrogramComponent>();
    spectrogram.stopTimer();

    std::vector<float> frame (FFTProcessor::numBins, 0.0f);
    frame[20] = 0.25f;
    fftProcessor.spectrumFifo.pushOverwriting (frame.data(), FFTProcessor::numBins);
    spectrogram.timerCallback();

    const auto frequency = juce::String (juce::roundToInt (20.0 * fftProcessor.sampleRate / 1024.0));
    EXPECT_EQ (getPart ("Spectrogram").value, frequency + " Hz, -12 dB");
}

TEST_F (VarloAccessibilityTest, APressIsAClick)
{
    auto& info = findHeaderButton ("info");
    EXPECT_TRUE (info.getAccessibilityHandler()->getActions().invoke (juce::AccessibilityActionType::press));
    EXPECT_TRUE (runMessageLoopUntil ([this] { return find<AboutComponent>().isVisible(); }));
}
} // namespace
} // namespace cv::varlo
